#include "zorv/core/flag.h"

#include "zorv/core/archive.h"

void ZoFlag::ReadV9(CZipWrapper* archive) {
    archive->ReadValue(flags);
}

void ZoFlag::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(flags);
}
