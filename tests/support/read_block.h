#pragma once

#include <functional>
#include <string>

#include "tests/support/temp_folder.h"

#include "zorv/core/link.h"
#include "zorv/core/reader.h"

/// Calls `read` as the handler of a block with this text in it. Returns the number of read errors.
inline int ReadBlock(const std::string& text, const std::function<void(ZoReaderObject*)>& read) {
    struct Target : LinkHdl {
        explicit Target(const std::function<void(ZoReaderObject*)>& handler) : call(handler) {}
        long Found(ZoReaderObject* object) {
            call(object);
            return 1;
        }
        const std::function<void(ZoReaderObject*)>& call;
    };
    const TempFolder folder;
    Target target(read);
    ZoReader reader(folder.Write("block.txt", "BLOCK { " + text + " }\n"));
    reader.RegisterObject(ZoReaderObject("BLOCK", Link(&target, &Target::Found)));
    reader.DoProcess(false);
    return reader.GetReadErrorCount();
}
