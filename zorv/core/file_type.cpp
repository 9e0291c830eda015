#include "zorv/core/file_type.h"

#include <iterator>
#include <optional>

#include "zorv/core/parser.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/string_tools.h"

namespace {

enum class Validation { kByName, kByFirstToken, kNever };

struct TypeRule {
    const wchar_t* extension;
    Validation validation;
    eZoTokentype firstToken = eZoTokenOther;
};

using enum Validation;

/// In the order of eZorvFiletype.
constexpr TypeRule kTypes[] = {
    {L".ProX", kByName},
    {L".pro", kByFirstToken, eZoTokenKeyword},
    {L".coo", kByFirstToken, eZoTokenInt},
    {L".coo2", kByFirstToken, eZoTokenInt},
    {L".aor", kByFirstToken, eZoTokenInt},
    {L".sip", kByFirstToken, eZoTokenBlockBegin},
    {L".imo", kByFirstToken, eZoTokenInt},
    {L".aob", kByFirstToken, eZoTokenInt},
    {L".log", kNever},
    {L".mlg", kNever},
    {L".res", kByFirstToken, eZoTokenString},
    {L".dres", kByFirstToken, eZoTokenBlockBegin},
    {L".cam", kNever},
    {L".atimo", kByFirstToken, eZoTokenKeyword},
    {L".autopt", kByName},
    {L".korrel", kByName},
    {L".hdimo", kNever},
    {L".ply", kByName},
    {L".pts", kByName},
    {L".xyz", kByName},
    {L".las", kByName},
    {L".laz", kByName},
    {L".e57", kByName},
    {L".zoptc", kByName},
    {L".dwg", kNever},
    {L".dxf", kNever},
    {L".gsi", kByName},
    {L".zip", kNever},
    {L".xml", kByName},
    {L".txt", kByName},
    {L".csv", kByName},
    {L".cmi", kByName},
    {L".PixelImo", kNever},
    {L".CooGsiImo", kNever},
    {L".jpg", kByName},
};
static_assert(std::size(kTypes) == eZorvFileNone);

struct TokenParser : ZoParser {
    using ZoParser::ParseForToken;
};

const TypeRule* RuleOf(eZorvFiletype type) {
    return type >= 0 && type < eZorvFileNone ? &kTypes[type] : nullptr;
}

}  // namespace

std::wstring GetZoExtension(eZorvFiletype type) {
    const TypeRule* rule = RuleOf(type);
    return rule ? rule->extension : L"";
}

void ZoDetectZorvFiles::Detector(const std::wstring& file) {
    byExtension = eZorvFileNone;
    validated = eZorvFileNone;
    const std::wstring extension = ZoGetExtension(file);
    int value = 0;
    while (value < eZorvFileNone && !StringEqualsNoCase(extension, kTypes[value].extension))
        ++value;
    if (value == eZorvFileNone) return;
    byExtension = static_cast<eZorvFiletype>(value);
    if (kTypes[value].validation == kByName) {
        validated = byExtension;
        return;
    }
    std::fstream stream(zorv::detail::NativePath(file), std::ios::in | std::ios::binary);
    validated = DetectFromContent(stream, byExtension);
}

eZorvFiletype ZoDetectZorvFiles::DetectFromContent(std::basic_fstream<char>& file, eZorvFiletype expected) {
    const TypeRule* rule = RuleOf(expected);
    if (!rule || rule->validation != kByFirstToken || !file.good()) return eZorvFileNone;
    bool passes = false;
    try {
        TokenParser parser;
        parser.ParseForToken(file);
        const eZoTokentype first = parser.GetToken().GetType();
        passes = first == rule->firstToken || first == eZoTokenEof;
    } catch (const ZoParserStatus& status) {
        passes = status.status == eZoParserStatusEof;
    }
    return passes ? expected : eZorvFileNone;
}
