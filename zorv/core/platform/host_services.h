#pragma once

#include <cstdint>
#include <functional>

#include "zorv/export.h"

/// A window of the host; the library only hands it on.
#ifdef _WIN32
struct HWND__;
using HWND = HWND__*;
#else
using HWND = void*;
#endif

/// What the library asks of the desktop that it runs on. A host installs what it can serve; a service that is missing
/// does nothing and answers 0 or false.
struct ZORV_API ZoHostServices {
    /// The number that every program gets for this message name; 0 on failure.
    std::function<unsigned int(const wchar_t* name)> registerMessage;
    /// Puts a message into the window's queue and returns at once; 0 on failure.
    std::function<int(HWND window, unsigned int message, std::intptr_t first, std::intptr_t second)> postMessage;
    /// The debug channel, for narrow (UTF-8) and for wide text. The text brings its own line ends.
    std::function<void(const char* text)> debugOutput;
    std::function<void(const wchar_t* text)> debugOutputWide;
    /// Shows a modal error box without an owner and returns when it is closed.
    std::function<void(const wchar_t* caption, const wchar_t* text)> messageBox;
    /// Frequency in Hz, duration in milliseconds; true when the beep was heard.
    std::function<bool(int frequency, int duration)> beep;
};

/// Replaces all services at once; ZoHostServices() takes them away. Process-wide, without a lock.
ZORV_API void ZoSetHostServices(const ZoHostServices& services);
/// The services as they are installed; they belong to the library.
ZORV_API const ZoHostServices& ZoGetHostServices();
