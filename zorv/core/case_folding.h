#pragma once

/// Letters in both cases, whatever the process locale: Latin, Greek and Cyrillic, one character for one.
namespace zorv::detail {

wchar_t ToLower(wchar_t c);
wchar_t ToUpper(wchar_t c);

}  // namespace zorv::detail
