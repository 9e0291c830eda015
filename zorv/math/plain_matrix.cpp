#include "zorv/math/plain_matrix.h"

#include "zorv/core/number_format.h"

using zorv::detail::AppendFixed;

std::string _MVector::AsString() const {
    std::string text = "[";
    for (int i = 0; i < 3; ++i) {
        AppendFixed(text, xyzw[i], 5, ' ');
        text += ' ';
    }
    AppendFixed(text, xyzw[3], 5);
    text += "] |";
    AppendFixed(text, std::sqrt(xyzw[0] * xyzw[0] + xyzw[1] * xyzw[1] + xyzw[2] * xyzw[2]), 4);
    text += '|';
    return text;
}

std::string _MMatrix::AsString() const {
    std::string text;
    for (int r = 0; r < 4; ++r) {
        text += r == 0 ? "[" : "\n ";
        for (int c = 0; c < 4; ++c) {
            text += c == 0 ? '[' : ' ';
            AppendFixed(text, m[r][c], 5, ' ');
        }
        text += ']';
    }
    text += ']';
    return text;
}
