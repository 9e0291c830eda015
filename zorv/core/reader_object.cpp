#include "zorv/core/reader_object.h"

#include <cstring>

#include "zorv/core/reader.h"
#include "zorv/core/text_conversion.h"

ZoReaderObject::ZoReaderObject() = default;

ZoReaderObject::ZoReaderObject(const char* word, void* value, eZoTokentype type) : target(value), targetType(type) {
    SetKeyword(word);
}

ZoReaderObject::ZoReaderObject(const char* word, int* value) : ZoReaderObject(word, value, eZoTokenInt) {}

ZoReaderObject::ZoReaderObject(const char* word, unsigned int* value) : ZoReaderObject(word, value, eZoTokenInt) {}

ZoReaderObject::ZoReaderObject(const char* word, bool* value) : ZoReaderObject(word, value, eZoTokenInt) {
    isBool = 1;
}

ZoReaderObject::ZoReaderObject(const char* word, double* value) : ZoReaderObject(word, value, eZoTokenNumber) {}

ZoReaderObject::ZoReaderObject(const char* word, std::string* value) : ZoReaderObject(word, value, eZoTokenString) {}

ZoReaderObject::ZoReaderObject(const char* word, std::wstring* value) : ZoReaderObject(word, value, eZoTokenWString) {}

ZoReaderObject::ZoReaderObject(const char* word, const Link& found) : targetType(eZoTokenKeyword), handler(found) {
    SetKeyword(word);
}

ZoReaderObject::ZoReaderObject(const char* word, const Link& found, const Link& finished)
    : targetType(eZoTokenOther), handler(found), finishHandler(finished) {
    SetKeyword(word);
}

ZoReaderObject::ZoReaderObject(const Link& found) : ZoReaderObject(kCatchAll, found) {}

ZoReaderObject::~ZoReaderObject() {
    if (!finishHandler) return;
    try {
        finishHandler.Call(this);
    } catch (...) {
        // Nobody could take an error out of a destructor.
    }
}

void ZoReaderObject::SetKeyword(const char* word) {
    if (word) std::strncpy(keyword, word, kKeywordSize - 1);
}

bool ZoReaderObject::IsKeyword(const char* word) const {
    return word && std::strcmp(keyword, word) == 0;
}

ZoStreamParser ZoReaderObject::GetStreamParser() const {
    return reader ? reader->GetStreamParser() : ZoStreamParser();
}

ZoReaderObject* ZoReaderObject::RegisterObject(const ZoReaderObject& object) {
    return reader ? reader->RegisterObject(object) : nullptr;
}

int ZoReaderObject::DoProcess() {
    if (!reader) return 1;
    reader->parser.SkipNextParse(true);
    return reader->DoProcess(false);
}

void ZoReaderObject::ParseForToken() {
    GetStreamParser().ParseForToken();
}

void ZoReaderObject::KeywordFound() {
    ZoParser& parser = reader->parser;
    switch (targetType) {
        case eZoTokenInt:
            if (isBool) {
                *static_cast<bool*>(target) = parser.GetTokenInt() != 0;
            } else {
                *static_cast<std::int32_t*>(target) = parser.GetTokenInt();
            }
            break;
        case eZoTokenNumber:
            *static_cast<double*>(target) = parser.GetTokenNumber();
            break;
        case eZoTokenString:
            *static_cast<std::string*>(target) = parser.GetTokenString();
            break;
        case eZoTokenWString:
            *static_cast<std::wstring*>(target) = string2wstring(parser.GetTokenString());
            break;
        default:
            handler.Call(this);
    }
}
