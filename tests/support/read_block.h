#pragma once

#include <functional>
#include <sstream>
#include <string>

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
    std::stringbuf source("BLOCK { " + text + " }\n");
    Target target(read);
    ZoReader reader(L"");
    std::istream& stream = reader.stream;
    stream.rdbuf(&source);
    reader.RegisterObject(ZoReaderObject("BLOCK", Link(&target, &Target::Found)));
    reader.DoProcess(false);
    return reader.GetReadErrorCount();
}
