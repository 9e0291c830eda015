#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include <locale.h>

#include "zorv/core/platform/printed_text.h"

namespace zorv::detail {

namespace {

/// Gives the calling thread a locale with a decimal point and UTF-8 for as long as it lives.
class TextLocale {
  public:
    TextLocale() : former(::uselocale(Get())) {}
    ~TextLocale() { ::uselocale(former); }
    TextLocale(const TextLocale&) = delete;
    TextLocale& operator=(const TextLocale&) = delete;

  private:
    static ::locale_t Get() {
        static const ::locale_t locale = [] {
            const ::locale_t utf8 = ::newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
            return utf8 ? utf8 : ::newlocale(LC_ALL_MASK, "C", nullptr);
        }();
        return locale;
    }

    ::locale_t former;
};

constexpr std::size_t kUsualLength = 512;

}  // namespace

std::optional<std::string> PrintText(const char* format, std::va_list arguments) {
    const TextLocale locale;
    std::va_list again;
    va_copy(again, arguments);
    std::string text(kUsualLength, '\0');
    int length = std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    if (length > static_cast<int>(kUsualLength)) {
        text.resize(static_cast<std::size_t>(length));
        length = std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    if (length < 0) return std::nullopt;
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::optional<std::wstring> PrintText(const wchar_t* format, std::va_list arguments) {
    const TextLocale locale;
    std::va_list again;
    va_copy(again, arguments);
    std::optional<std::wstring> text;
    wchar_t usual[kUsualLength];
    int length = std::vswprintf(usual, kUsualLength, format, arguments);
    if (length >= 0) {
        text.emplace(usual, static_cast<std::size_t>(length));
    } else {
        // Too long or not to be formatted, vswprintf does not tell which.
        wchar_t* grown = nullptr;
        std::size_t size = 0;
        if (std::FILE* memory = ::open_wmemstream(&grown, &size)) {
            length = std::vfwprintf(memory, format, again);
            const bool complete = std::fclose(memory) == 0 && length >= 0;
            if (complete) text.emplace(grown, size);
            std::free(grown);
        }
    }
    va_end(again);
    return text;
}

}  // namespace zorv::detail
