#pragma once

#include "zorv/export.h"

/// Whether the working directory takes files: writes and reads back "ZorvtestWrite.txt" there and deletes it.
ZORV_API bool IsCurrentPathWriteable();

/// Stays when the working directory is writable, else goes to the system's folder for temporary files. Whether the
/// working directory is writable then.
ZORV_API bool SetCurrentPathToWriteAblePath();

/// Goes to the folder and on to a writable one when it is not. What cannot be entered counts as the folder that is
/// current already. Narrow text is UTF-8.
ZORV_API void SetCurrentPathTo(const char* path);
ZORV_API void SetCurrentPathTo(const wchar_t* path);
