#include "zorv/core/text_writer.h"

#include <algorithm>
#include <ostream>

#include "zorv/core/record_text.h"

namespace {

constexpr int kBlanksPerLevel = 4;

int level = 0;

void LevelDown() {
    level = std::max(0, level - 1);
}

std::ostream& Precision(std::ostream& stream, int digits) {
    stream.precision(digits);
    return stream;
}

std::ostream& RightField(std::ostream& stream, zorv::detail::FieldWidth width) {
    stream.put(' ');
    stream.setf(std::ios::right, std::ios::adjustfield);
    stream.width(static_cast<int>(width));
    return stream;
}

std::ostream& LeftField(std::ostream& stream, int width) {
    stream.setf(std::ios::left, std::ios::adjustfield);
    stream.width(width);
    return stream;
}

}  // namespace

std::ostream& ZoBeginBlock(std::ostream& stream) {
    ++level;
    return stream << '{';
}

std::ostream& ZoBeginBlockNL(std::ostream& stream) {
    stream << '{';
    ++level;
    return Zoendl(stream);
}

std::ostream& ZoEndBlock(std::ostream& stream) {
    LevelDown();
    return stream << '}';
}

std::ostream& ZoEndBlockNL(std::ostream& stream) {
    LevelDown();
    return Zoendl(stream) << '}';
}

std::ostream& ZoComment(std::ostream& stream) {
    return stream << "; ";
}

std::ostream& ZoTabPlus(std::ostream& stream) {
    ++level;
    return stream;
}

std::ostream& ZoTabMinus(std::ostream& stream) {
    LevelDown();
    return stream;
}

std::ostream& Zoendl(std::ostream& stream) {
    stream.put('\n').flush();
    for (int blanks = level * kBlanksPerLevel; blanks > 0; --blanks)
        stream.put(' ');
    return stream;
}

void ZoWriterReset() {
    level = 0;
}

std::ostream& p4(std::ostream& stream) {
    return Precision(stream, 4);
}
std::ostream& p6(std::ostream& stream) {
    return Precision(stream, 6);
}
std::ostream& p8(std::ostream& stream) {
    return Precision(stream, 8);
}
std::ostream& p10(std::ostream& stream) {
    return Precision(stream, 10);
}
std::ostream& p16(std::ostream& stream) {
    return Precision(stream, 16);
}

using zorv::detail::FieldWidth;

std::ostream& w4(std::ostream& stream) {
    return RightField(stream, FieldWidth::w4);
}
std::ostream& w5(std::ostream& stream) {
    return RightField(stream, FieldWidth::w5);
}
std::ostream& w6(std::ostream& stream) {
    return RightField(stream, FieldWidth::w6);
}
std::ostream& w8(std::ostream& stream) {
    return RightField(stream, FieldWidth::w8);
}
std::ostream& w10(std::ostream& stream) {
    return RightField(stream, FieldWidth::w10);
}
std::ostream& w12(std::ostream& stream) {
    return RightField(stream, FieldWidth::w12);
}
std::ostream& w14(std::ostream& stream) {
    return RightField(stream, FieldWidth::w14);
}
std::ostream& w16(std::ostream& stream) {
    return RightField(stream, FieldWidth::w16);
}
std::ostream& w19(std::ostream& stream) {
    return RightField(stream, FieldWidth::w19);
}

std::ostream& s2(std::ostream& stream) {
    return LeftField(stream, 2);
}
std::ostream& s4(std::ostream& stream) {
    return LeftField(stream, 4);
}
std::ostream& s8(std::ostream& stream) {
    return LeftField(stream, 8);
}
std::ostream& s10(std::ostream& stream) {
    return LeftField(stream, 10);
}
std::ostream& s12(std::ostream& stream) {
    return LeftField(stream, 12);
}
std::ostream& s14(std::ostream& stream) {
    return LeftField(stream, 14);
}
std::ostream& s16(std::ostream& stream) {
    return LeftField(stream, 16);
}
std::ostream& s20(std::ostream& stream) {
    return LeftField(stream, 20);
}
std::ostream& s30(std::ostream& stream) {
    return LeftField(stream, 30);
}
std::ostream& s34(std::ostream& stream) {
    return LeftField(stream, 34);
}
