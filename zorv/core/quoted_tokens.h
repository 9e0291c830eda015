#pragma once

#include "zorv/export.h"

/// Cuts a text into tokens in place, as strtok does, with quoted tokens that may hold delimiters.
///
/// Null goes on where the last call stopped, which is one place for the whole process; the text must still be there.
/// A token that begins with the quote runs behind it to the next quote or to the end of the text; the character behind
/// the closing quote is taken for a delimiter. Returns null at the end of the text, from then on for every null, and
/// for null without an earlier call. Nothing behind the terminator is ever touched.
ZORV_API char* strstok(char* text, const char* delimiters, char quote);
