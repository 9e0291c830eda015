#pragma once

#include "zorv/core/platform/host_services.h"
#include "zorv/export.h"

/// Tells the host's window how far a long operation has come. Process-wide: the text and the bounds stay here, where
/// the window reads them; a message carries two numbers and never waits.
class ZORV_API ZoProgressBarRouter {
  public:
    static constexpr int kTextSize = 1200;  ///< characters of the text, its terminator included

    /// Null stops the messages.
    static void SetMsgHWND(HWND target) { window = target; }

    /// Posts the show message with both bounds. The text is cut to 1199 characters. These three return the result of
    /// the post, 0 without a window; the values are stored either way.
    static int ShowProgressBar(const wchar_t* newText, int newLower, int newUpper);
    /// Posts the position and 0.
    static int SetProgressBarPos(int newPos);
    /// Posts 0 and 0.
    static int HideProgressBar();

    static const wchar_t* GetProgressBarText() { return text; }
    static int GetProgressBarLower() { return lower; }
    static int GetProgressBarUpper() { return upper; }
    static int GetProgressBarPos() { return pos; }

    /// Numbers of the messages "MsgZoShowProgressbar", "MsgZoSetProgressBarPos" and "MsgZoHideProgresBar", registered
    /// on first use; 0 when the host registers none.
    static unsigned int GetMsgShowProgressBar();
    static unsigned int GetMsgSetProgressBarPos();
    static unsigned int GetMsgHideProgresBar();

    static wchar_t text[kTextSize];
    static int lower;
    static int upper;
    static int pos;
    static HWND window;
};
