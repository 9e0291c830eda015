#pragma once

#include "zorv/core/parser.h"
#include "zorv/core/stream_parser.h"

namespace zorv::detail {

/// Takes the number at hand; a word or a string in its place counts as 0. Braces and the end of the file throw as a
/// number request does.
inline double TakeLenientNumber(ZoStreamParser& in) {
    const ZoParserToken& token = in.parser->GetToken();
    switch (token.GetType()) {
        case eZoTokenBlockBegin:
        case eZoTokenBlockEnd:
        case eZoTokenEof:
            in.parser->GetToken(eZoTokenNumber);
            break;
        default:
            break;
    }
    const double value = token.GetNumber();
    in.ParseForToken();
    return value;
}

}  // namespace zorv::detail
