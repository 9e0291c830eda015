#pragma once

namespace zorv::detail {

constexpr int kPolynomialTerms = 10;

/// The terms of a polynomial of the third degree: 1, x, y, x², xy, y², x³, x²y, xy², y³.
inline void PolynomialTerms(double x, double y, double (&terms)[kPolynomialTerms]) {
    terms[0] = 1.0;
    terms[1] = x;
    terms[2] = y;
    terms[3] = x * x;
    terms[4] = x * y;
    terms[5] = y * y;
    terms[6] = x * x * x;
    terms[7] = x * x * y;
    terms[8] = x * y * y;
    terms[9] = y * y * y;
}

}  // namespace zorv::detail
