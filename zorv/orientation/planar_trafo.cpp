#include "zorv/orientation/planar_trafo.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "zorv/core/archive.h"
#include "zorv/core/debug_output.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/math/matrix.h"
#include "zorv/orientation/polynomial_terms.h"
#include "zorv/points/point.h"

using zorv::detail::FieldWidth;
using zorv::detail::kPolynomialTerms;
using zorv::detail::RecordText;

namespace {

constexpr double kSmallestDenominator = 1e-10;

/// How many coefficients a text form has.
int CountCoefs(eZoTrafo2DType type) {
    switch (type) {
        case eTrafo2DHelmert:
            return 4;
        case eTrafo2DAffin:
            return 6;
        case eTrafo2DProjektiv:
            return 8;
        case eTrafo2DPolynomial:
            return 2 * kPolynomialTerms;
        default:
            return 0;
    }
}

}  // namespace

void ZoTrafo2d::Init() {
    type = eTrafo2DNone;
    std::fill_n(coef, kCoefCount, 0.0);
}

void ZoTrafo2d::Set(double a0, double a1, double b0, double b1) {
    type = eTrafo2DHelmert;
    const double values[] = {a0, a1, b0, b1};
    std::copy(std::begin(values), std::end(values), coef);
}

void ZoTrafo2d::Set(double a0, double a1, double a2, double b0, double b1, double b2) {
    type = eTrafo2DAffin;
    const double values[] = {a0, a1, a2, b0, b1, b2};
    std::copy(std::begin(values), std::end(values), coef);
}

void ZoTrafo2d::Set(const ZoTrafo2d& other) {
    ZoTrafo2d::operator=(other);
}

const wchar_t* ZoTrafo2d::GetTrafoName(eZoTrafo2DType type) {
    switch (type) {
        case eTrafo2DHelmert:
            return L"Helmert";
        case eTrafo2DAffin:
            return L"Affin";
        case eTrafo2DProjektiv:
            return L"Projektiv";
        case eTrafo2DPolynomial:
            return L"Polynomial";
        case eTrafo2DInvHelmert:
            return L"Inv. Helmert";
        default:
            return L"None";
    }
}

bool ZoTrafo2d::Transform(double* x, double* y) const {
    const double px = *x;
    const double py = *y;
    const double* c = coef;
    switch (type) {
        case eTrafo2DHelmert:
            *x = c[0] + c[1] * px - c[3] * py;
            *y = c[2] + c[3] * px + c[1] * py;
            return true;
        case eTrafo2DAffin:
            *x = c[0] + c[1] * px + c[2] * py;
            *y = c[3] + c[4] * px + c[5] * py;
            return true;
        case eTrafo2DProjektiv: {
            const double w = c[6] * px + c[7] * py + 1.0;
            if (std::fabs(w) < kSmallestDenominator) return false;
            *x = (c[0] * px + c[1] * py + c[2]) / w;
            *y = (c[3] * px + c[4] * py + c[5]) / w;
            return true;
        }
        case eTrafo2DPolynomial: {
            double terms[kPolynomialTerms];
            zorv::detail::PolynomialTerms(px, py, terms);
            *x = 0.0;
            *y = 0.0;
            for (int i = 0; i < kPolynomialTerms; ++i) {
                *x += c[i] * terms[i];
                *y += c[kPolynomialTerms + i] * terms[i];
            }
            return true;
        }
        default:
            return false;
    }
}

bool ZoTrafo2d::Transform(ZoPoint* point) const {
    return Transform(&point->x, &point->y);
}

bool ZoTrafo2d::TransInvHelmert(double* x, double* y) const {
    const double a0 = coef[0];
    const double a1 = coef[1];
    const double b0 = coef[2];
    const double b1 = coef[3];
    const double squaredScale = a1 * a1 + b1 * b1;
    if (squaredScale == 0.0) return false;
    const double px = *x;
    const double py = *y;
    *x = (a1 * px + b1 * py - (a1 * a0 + b1 * b0)) / squaredScale;
    *y = (a1 * py - b1 * px + (b1 * a0 - a1 * b0)) / squaredScale;
    return true;
}

bool ZoTrafo2d::TransInvHelmert(ZoPoint* point) const {
    return TransInvHelmert(&point->x, &point->y);
}

void ZoTrafo2d::BuildMatrix(ZoMatrix* m) const {
    const double* c = coef;
    switch (type) {
        case eTrafo2DHelmert: {
            const double values[] = {c[1], -c[3], c[0], c[3], c[1], c[2], 0.0, 0.0, 1.0};
            return m->Set(values, 3, 3);
        }
        case eTrafo2DAffin: {
            const double values[] = {c[1], c[2], c[0], c[4], c[5], c[3], 0.0, 0.0, 1.0};
            return m->Set(values, 3, 3);
        }
        case eTrafo2DProjektiv: {
            const double values[] = {c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], 1.0};
            return m->Set(values, 3, 3);
        }
        default: {
            const double values[] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
            return m->Set(values, 3, 3);
        }
    }
}

void ZoTrafo2d::SetFromMatrix(const ZoMatrix& m, eZoTrafo2DType matrixType) {
    type = matrixType;
    switch (type) {
        case eTrafo2DHelmert:
            return Set(m[1][3], m[1][1], m[2][3], m[2][1]);
        case eTrafo2DAffin:
            return Set(m[1][3], m[1][1], m[1][2], m[2][3], m[2][1], m[2][2]);
        case eTrafo2DProjektiv:
            for (int i = 0; i < 8; ++i)
                coef[i] = m.GetElemZeroIndex(i / 3, i % 3);
            return;
        default:
            return;
    }
}

void ZoTrafo2d::DbgPrintf(const char* prefix) const {
    const char* text = prefix ? prefix : "";
    const double* c = coef;
    switch (type) {
        case eTrafo2DHelmert:
            dbgprintf("%sHelmert a0 %f  a1 %f  b0 %f  b1 %f", text, c[0], c[1], c[2], c[3]);
            break;
        case eTrafo2DAffin:
            dbgprintf("%sAffin   a0 %f  a1 %f  a2 %f  b0 %f  b1 %f  b2 %f", text, c[0], c[1], c[2], c[3], c[4], c[5]);
            break;
        case eTrafo2DProjektiv:
            dbgprintf("%sProjektiv  %f %f %f %f %f %f %f %f", text, c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
            break;
        case eTrafo2DPolynomial:
            dbgprintf("%sPolynom", text);
            break;
        default:
            break;
    }
}

void ZoTrafo2d::ReadCoefs(ZoReaderObject* object, eZoTrafo2DType newType) {
    ZoStreamParser in = object->GetStreamParser();
    double values[kCoefCount];
    const int count = CountCoefs(newType);
    for (int i = 0; i < count; ++i)
        in >> values[i];
    type = newType;
    std::copy_n(values, count, coef);
}

int ZoTrafo2d::Read(ZoReaderObject* object) {
    int number = 0;
    object->GetStreamParser() >> number;
    ReadCoefs(object, static_cast<eZoTrafo2DType>(number));
    return 1;
}

int ZoTrafo2d::ReadV50(ZoReaderObject* object) {
    constexpr eZoTrafo2DType kTypes[] = {eTrafo2DProjektiv, eTrafo2DAffin, eTrafo2DHelmert, eTrafo2DPolynomial};
    int number = 0;
    object->GetStreamParser() >> number;
    if (number >= 0 && number < static_cast<int>(std::size(kTypes))) ReadCoefs(object, kTypes[number]);
    return 1;
}

std::ostream& ZoTrafo2d::Write(std::ostream& stream) const {
    constexpr int kOnLine = 4;
    constexpr int kDigits = 16;
    RecordText text;
    text.Field(FieldWidth::w4, static_cast<int>(type)).WriteTo(stream);
    stream << Zoendl << p16;
    const int count = CountCoefs(type);
    for (int i = 0; i < count; ++i) {
        text.Clear();
        text.Field(FieldWidth::w19, zorv::detail::FiniteOrZero(coef[i]), kDigits).WriteTo(stream);
        if (i % kOnLine == kOnLine - 1) stream << Zoendl;
    }
    return stream;
}

void ZoTrafo2d::ReadV9(CZipWrapper* archive) {
    eZoTrafo2DType newType = type;
    double values[kCoefCount];
    bool complete = archive->ReadValue(newType);
    for (double& value : values)
        complete = complete && archive->ReadValue(value);
    if (!complete) return;
    type = newType;
    std::copy_n(values, kCoefCount, coef);
}

void ZoTrafo2d::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(type);
    for (const double value : coef)
        archive->WriteValue(value);
}
