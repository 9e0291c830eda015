#include "zorv/core/filter.h"

namespace {

bool Passes(const std::unique_ptr<const ZoFilter>& filter, const ZoObject* object) {
    return filter && filter->Test(object) != 0;
}

}  // namespace

unsigned int ZoBinaryFilter::Test(const ZoObject* object) const {
    return Passes(left, object) || Passes(right, object) ? 1 : 0;
}

unsigned int ZoAndFilter::Test(const ZoObject* object) const {
    return Passes(left, object) && Passes(right, object) ? 1 : 0;
}

unsigned int ZoNotFilter::Test(const ZoObject* object) const {
    return Passes(operand, object) ? 0 : 1;
}
