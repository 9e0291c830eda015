#pragma once

#include <iosfwd>

#include "zorv/export.h"

/// \file
/// Stream manipulators of the tagged text syntax. The indentation is one process-wide level. std::left and std::right
/// set the alignment alone.

ZORV_API std::ostream& ZoBeginBlock(std::ostream& stream);    ///< level up, `{`
ZORV_API std::ostream& ZoBeginBlockNL(std::ostream& stream);  ///< `{`, level up, Zoendl
ZORV_API std::ostream& ZoEndBlock(std::ostream& stream);      ///< level down, `}`
ZORV_API std::ostream& ZoEndBlockNL(std::ostream& stream);    ///< level down, Zoendl, `}`
ZORV_API std::ostream& ZoComment(std::ostream& stream);       ///< "; "
ZORV_API std::ostream& ZoTabPlus(std::ostream& stream);       ///< level up
ZORV_API std::ostream& ZoTabMinus(std::ostream& stream);      ///< level down, not below 0
ZORV_API std::ostream& Zoendl(std::ostream& stream);          ///< line end, flush, four blanks per level
ZORV_API void ZoWriterReset();                                ///< level 0

/// Precision in significant digits, told by the comment.
ZORV_API std::ostream& p4(std::ostream& stream);   ///< 4
ZORV_API std::ostream& p6(std::ostream& stream);   ///< 6
ZORV_API std::ostream& p8(std::ostream& stream);   ///< 8
ZORV_API std::ostream& p10(std::ostream& stream);  ///< 10
ZORV_API std::ostream& p16(std::ostream& stream);  ///< 16

/// One blank, so that columns never run together, then a right-aligned field of the width that the comment tells.
ZORV_API std::ostream& w4(std::ostream& stream);   ///< 4
ZORV_API std::ostream& w5(std::ostream& stream);   ///< 5
ZORV_API std::ostream& w6(std::ostream& stream);   ///< 8
ZORV_API std::ostream& w8(std::ostream& stream);   ///< 10
ZORV_API std::ostream& w10(std::ostream& stream);  ///< 12
ZORV_API std::ostream& w12(std::ostream& stream);  ///< 16
ZORV_API std::ostream& w14(std::ostream& stream);  ///< 18
ZORV_API std::ostream& w16(std::ostream& stream);  ///< 21
ZORV_API std::ostream& w19(std::ostream& stream);  ///< 24

/// A left-aligned field of the width that the comment tells.
ZORV_API std::ostream& s2(std::ostream& stream);   ///< 2
ZORV_API std::ostream& s4(std::ostream& stream);   ///< 4
ZORV_API std::ostream& s8(std::ostream& stream);   ///< 8
ZORV_API std::ostream& s10(std::ostream& stream);  ///< 10
ZORV_API std::ostream& s12(std::ostream& stream);  ///< 12
ZORV_API std::ostream& s14(std::ostream& stream);  ///< 14
ZORV_API std::ostream& s16(std::ostream& stream);  ///< 16
ZORV_API std::ostream& s20(std::ostream& stream);  ///< 20
ZORV_API std::ostream& s30(std::ostream& stream);  ///< 30
ZORV_API std::ostream& s34(std::ostream& stream);  ///< 34
