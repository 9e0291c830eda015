#include "zorv/core/stream_parser.h"

#include "zorv/core/parser.h"
#include "zorv/core/text_conversion.h"

ZoParser& ZoStreamParser::Tokens() const {
    if (stream && parser) return *parser;
    ZoParserStatus error;
    error.status = eZoParserErrorStream;
    throw error;
}

ZoStreamParser& ZoStreamParser::operator>>(int& value) {
    value = Tokens().GetTokenInt();
    parser->Advance(*stream);
    return *this;
}

ZoStreamParser& ZoStreamParser::operator>>(unsigned int& value) {
    value = static_cast<unsigned int>(Tokens().GetTokenInt());
    parser->Advance(*stream);
    return *this;
}

ZoStreamParser& ZoStreamParser::operator>>(double& value) {
    value = Tokens().GetTokenNumber();
    parser->Advance(*stream);
    return *this;
}

ZoStreamParser& ZoStreamParser::operator>>(std::string& value) {
    value = Tokens().GetTokenString();
    parser->Advance(*stream);
    return *this;
}

ZoStreamParser& ZoStreamParser::operator>>(std::wstring& value) {
    value = string2wstring(Tokens().GetTokenString());
    parser->Advance(*stream);
    return *this;
}

void ZoStreamParser::ParseForToken() {
    Tokens().Advance(*stream);
}
