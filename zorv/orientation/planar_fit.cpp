#include "zorv/orientation/planar_fit.h"

#include <algorithm>
#include <cmath>

#include "zorv/math/matrix.h"
#include "zorv/orientation/partner_finder.h"
#include "zorv/orientation/polynomial_terms.h"

namespace {

/// What a point pair contributes: one observation of X and one of Y, as rows of coefficients with the right-hand side
/// behind them. In all transformations they share their first terms, each in a block of its own:
///     X: terms, zeros, tailX
///     Y: zeros, terms, tailY
template <int terms, int tail>
struct PairRows {
    static constexpr int kTerms = terms;
    static constexpr int kTail = tail;  ///< unknowns behind the blocks, and the right-hand side
    static constexpr int kUnknowns = 2 * terms + tail - 1;

    double shared[terms];
    double tailX[tail];
    double tailY[tail];
};

struct Helmert {
    using Rows = PairRows<1, 3>;
    static constexpr eZoTrafo2DType kType = eTrafo2DHelmert;
    static constexpr int kLimit = 1;
    static Rows Observe(double x, double y, double targetX, double targetY) {
        return {{1.0}, {x, -y, targetX}, {y, x, targetY}};
    }
};

struct Affin {
    using Rows = PairRows<3, 1>;
    static constexpr eZoTrafo2DType kType = eTrafo2DAffin;
    static constexpr int kLimit = 2;
    static Rows Observe(double x, double y, double targetX, double targetY) {
        return {{1.0, x, y}, {targetX}, {targetY}};
    }
};

struct Projektiv {
    using Rows = PairRows<3, 3>;
    static constexpr eZoTrafo2DType kType = eTrafo2DProjektiv;
    static constexpr int kLimit = 3;
    static Rows Observe(double x, double y, double targetX, double targetY) {
        return {{x, y, 1.0}, {-x * targetX, -y * targetX, targetX}, {-x * targetY, -y * targetY, targetY}};
    }
};

struct Polynomial {
    using Rows = PairRows<zorv::detail::kPolynomialTerms, 1>;
    static constexpr eZoTrafo2DType kType = eTrafo2DPolynomial;
    static constexpr int kLimit = 9;
    static Rows Observe(double x, double y, double targetX, double targetY) {
        Rows rows;
        zorv::detail::PolynomialTerms(x, y, rows.shared);
        rows.tailX[0] = targetX;
        rows.tailY[0] = targetY;
        return rows;
    }
};

/// Gives `take` the observations of each point that has a partner, in the order of the list.
template <class Model, class Take>
void ForEachPair(const ZoPointList& list, ZoPointList* targets, Take take) {
    zorv::detail::PartnerFinder partners(targets);
    for (const ZoPoint* point = list.First(); point; point = point->NextConst()) {
        const auto partner = partners.Find(*point);
        if (partner) take(Model::Observe(point->x, point->y, partner->x, partner->y));
    }
}

/// The sums of ZoMatrix::CalcNGLAN over rows of that kind, without the products with their zeros and without what
/// mirrors or repeats another sum. Each sum has the same addends in the same order. A product with zero changes no
/// finite sum, since one that began as +0 never becomes -0; so the result is the same to the last bit.
template <class Rows>
class NormalSums {
  public:
    void Add(const Rows& rows) {
        for (int i = 0; i < kTerms; ++i) {
            const double factor = rows.shared[i];
            for (int j = i; j < kTerms; ++j)
                block[i][j] += factor * rows.shared[j];
            for (int j = 0; j < kTail; ++j) {
                besideX[i][j] += factor * rows.tailX[j];
                besideY[i][j] += factor * rows.tailY[j];
            }
        }
        for (int i = 0; i < kTail; ++i) {
            for (int j = i; j < kTail; ++j) {
                corner[i][j] += rows.tailX[i] * rows.tailX[j];
                corner[i][j] += rows.tailY[i] * rows.tailY[j];
            }
        }
    }

    /// Puts the sums into their places. False when one is not finite.
    bool Fill(ZoMatrix& normal) const {
        bool finite = true;
        const auto put = [&](int line, int column, double sum) {
            normal[line][column] = sum;
            normal[column][line] = sum;
            finite = finite && std::isfinite(sum);
        };
        for (int i = 0; i < kTerms; ++i) {
            const int lineX = 1 + i;
            const int lineY = 1 + kTerms + i;
            for (int j = i; j < kTerms; ++j) {
                put(lineX, 1 + j, block[i][j]);
                put(lineY, 1 + kTerms + j, block[i][j]);
            }
            for (int j = 0; j < kTail; ++j) {
                put(lineX, kTailColumn + j, besideX[i][j]);
                put(lineY, kTailColumn + j, besideY[i][j]);
            }
        }
        for (int i = 0; i < kTail; ++i) {
            for (int j = i; j < kTail; ++j)
                put(kTailColumn + i, kTailColumn + j, corner[i][j]);
        }
        return finite;
    }

  private:
    static constexpr int kTerms = Rows::kTerms;
    static constexpr int kTail = Rows::kTail;
    static constexpr int kTailColumn = 1 + 2 * kTerms;

    double block[kTerms][kTerms] = {};
    double besideX[kTerms][kTail] = {};
    double besideY[kTerms][kTail] = {};
    double corner[kTail][kTail] = {};
};

/// The normal equations, with the identity beside them. Their size depends on the unknowns alone.
template <class Model>
ZoMatrix NormalEquations(const ZoPointList& list, ZoPointList* targets) {
    using Rows = typename Model::Rows;
    constexpr int u = Rows::kUnknowns;
    ZoMatrix normal(u + 1, 2 * u + 1);
    NormalSums<Rows> sums;
    ForEachPair<Model>(list, targets, [&](const Rows& rows) { sums.Add(rows); });
    if (!sums.Fill(normal)) {
        // A zero times infinity or not-a-number does count.
        normal.Clear();
        ZoVector rowX(u + 1);
        ZoVector rowY(u + 1);
        ForEachPair<Model>(list, targets, [&](const Rows& rows) {
            std::copy_n(rows.shared, Rows::kTerms, &rowX[1]);
            std::copy_n(rows.tailX, Rows::kTail, &rowX[1 + 2 * Rows::kTerms]);
            normal.CalcNGLAN(rowX);
            std::copy_n(rows.shared, Rows::kTerms, &rowY[1 + Rows::kTerms]);
            std::copy_n(rows.tailY, Rows::kTail, &rowY[1 + 2 * Rows::kTerms]);
            normal.CalcNGLAN(rowY);
        });
    }
    for (int i = 1; i <= u; ++i)
        normal[i][u + 1 + i] = 1.0;
    return normal;
}

}  // namespace

ZoCalcTrafo2D::ZoCalcTrafo2D(const ZoCalcTrafo2D& other)
    : ZoTrafo2d(other),
      ppList(other.ppList == &other.ownList ? &ownList : other.ppList),
      actList(other.actList == &other.ownList ? &ownList : other.actList),
      ownList(other.ownList),
      maxError(other.maxError),
      residualX(other.residualX),
      residualY(other.residualY),
      scale(other.scale) {}

ZoCalcTrafo2D& ZoCalcTrafo2D::operator=(const ZoCalcTrafo2D& other) {
    if (this == &other) return *this;
    ZoTrafo2d::operator=(other);
    ppList = other.ppList == &other.ownList ? &ownList : other.ppList;
    actList = other.actList == &other.ownList ? &ownList : other.actList;
    ownList = other.ownList;
    maxError = other.maxError;
    residualX = other.residualX;
    residualY = other.residualY;
    scale = other.scale;
    return *this;
}

void ZoCalcTrafo2D::Init() {
    residualX = 0.0;
    residualY = 0.0;
    scale = 1.0;
}

/// Adjustment by observation equations.
template <class Model>
bool ZoCalcTrafo2D::Fit(ZoPointList* list) {
    if (!list || !list->CountMoreThan(Model::kLimit)) return false;
    ZoVector solution(Model::Rows::kUnknowns);
    NormalEquations<Model>(*list, ppList).Cholesky(solution);
    type = Model::kType;
    std::copy_n(&solution[1], solution.GetSize(), coef);
    return true;
}

bool ZoCalcTrafo2D::CalcTrafoHelmert(ZoPointList* list) {
    if (!Fit<Helmert>(list)) return false;
    // The unknowns come as a0, b0, a1, b1.
    std::swap(coef[1], coef[2]);
    const double length = std::sqrt(coef[1] * coef[1] + coef[3] * coef[3]);
    const bool found = length > 0.0;
    scale = found ? 1.0 / length : length;
    return found;
}

bool ZoCalcTrafo2D::CalcTrafoAffin(ZoPointList* list) {
    return Fit<Affin>(list);
}

bool ZoCalcTrafo2D::CalcTrafoProjectiv(ZoPointList* list) {
    return Fit<Projektiv>(list);
}

bool ZoCalcTrafo2D::CalcTrafoPolynom(ZoPointList* list) {
    return Fit<Polynomial>(list ? list : actList);
}

bool ZoCalcTrafo2D::CalcTrafoHelmert(double a, int na, double b, int nb) {
    Set(-a / 2.0, na != 0 ? a / na : 0.0, -b / 2.0, nb != 0 ? b / nb : 0.0);
    return true;
}
