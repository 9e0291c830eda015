#pragma once

#include <string>

#include "zorv/export.h"

/// Sets the C locale of the whole process and puts the former one back at the end of its life. Lives that overlap
/// must end in the reverse order of their beginning.
class ZORV_API ZoCLocale {
  public:
    ZoCLocale(int category, const char* locale);
    ~ZoCLocale();
    ZoCLocale(const ZoCLocale&) = delete;
    ZoCLocale& operator=(const ZoCLocale&) = delete;

  private:
    std::string former;
};
