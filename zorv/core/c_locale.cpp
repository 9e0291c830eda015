#include "zorv/core/c_locale.h"

#include <clocale>

ZoCLocale::ZoCLocale(int category, const char* locale) {
    if (const char* current = std::setlocale(LC_ALL, nullptr)) former = current;
    std::setlocale(category, locale);
}

ZoCLocale::~ZoCLocale() {
    if (!former.empty()) std::setlocale(LC_ALL, former.c_str());
}
