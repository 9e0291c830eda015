#pragma once

#include "zorv/export.h"

/// Lets the compiler check a printf format, the argument of that number, against the arguments from the second number
/// on.
#if defined(__GNUC__)
#define ZORV_PRINTF(text, arguments) __attribute__((format(printf, text, arguments)))
#else
#define ZORV_PRINTF(text, arguments)
#endif

/// Formats by printf's rules and sends the text to the host's debug channel, cut to 9499 characters. In the wide form
/// `%s` and `%c` are wide text. Returns the number of characters sent, or -1 when formatting fails; then nothing is
/// sent.
ZORV_API int dbgprintf(const char* format, ...) ZORV_PRINTF(1, 2);
ZORV_API int dbgprintf(const wchar_t* format, ...);

/// Sends the text as it stands.
ZORV_API void dbgputs(const char* text);
ZORV_API void dbgputs(const wchar_t* text);

/// Shows the host's modal error box; narrow text is UTF-8. Always true.
ZORV_API bool ZoMessageErrorBox(const char* caption, const char* text);
ZORV_API bool ZoMessageErrorBox(const wchar_t* caption, const wchar_t* text);

/// Frequency in Hz, duration in milliseconds; true when the host beeped.
ZORV_API bool ZorvBeep(int frequency, int duration);
