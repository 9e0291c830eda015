#include "zorv/orientation/affine_constraint_solver.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "zorv/cad/distance_section.h"
#include "zorv/orientation/affine_constraint_log.h"

namespace {

constexpr double kSameCircle = 1e-8;
constexpr double kEighthTurn = 0.7853981633974483;
constexpr double kGroupPart = 10.0;  // groups are this part of the extent of all sections

using Sections = std::vector<ZoPoint3d>;

void AddSections(const ZoAffineConstraint& first, const ZoAffineConstraint& second, Sections& sections) {
    const ZoCadBogenschlag section(ZoPoint3d(first.centerX, first.centerY, 0.0), first.radius,
                                   ZoPoint3d(second.centerX, second.centerY, 0.0), second.radius, kSameCircle);
    if (section.IsValid()) {
        sections.push_back(section.P1());
        sections.push_back(section.P2());
    } else if (section.IsConcentric()) {
        sections.push_back(section.GetConcentricPx(kEighthTurn));
        sections.push_back(section.GetConcentricPx(-kEighthTurn));
    }
}

void WriteLog(const Sections& sections) {
    if (sections.empty()) return;
    std::string text;
    for (const ZoPoint3d& section : sections)
        zorv::detail::AppendLogLine(text, {section.x(), section.y()});
    zorv::detail::AppendToLog(L"c:\\AffinConstraintRes.txt", text);
}

bool IsCandidate(const ZoPoint3d& section) {
    return std::isfinite(section.x()) && std::isfinite(section.y()) && section.y() >= 0.0;
}

double LargerExtent(const Sections& sections) {
    const auto byX = [](const ZoPoint3d& p, const ZoPoint3d& q) { return p.x() < q.x(); };
    const auto byY = [](const ZoPoint3d& p, const ZoPoint3d& q) { return p.y() < q.y(); };
    const auto [left, right] = std::minmax_element(sections.begin(), sections.end(), byX);
    const auto [low, high] = std::minmax_element(sections.begin(), sections.end(), byY);
    return std::max(right->x() - left->x(), high->y() - low->y());
}

/// The first point of the largest group, of the last one among equals. There is at least one point.
ZoPoint3d SeedOfLargestGroup(const Sections& sections) {
    struct Group {
        ZoPoint3d seed;
        int others;
    };
    const double tolerance = LargerExtent(sections) / kGroupPart;
    std::vector<Group> groups;
    for (const ZoPoint3d& section : sections) {
        const auto near = [&](const Group& group) { return group.seed.Distance(section) <= tolerance; };
        const auto found = std::find_if(groups.begin(), groups.end(), near);
        if (found == groups.end()) {
            groups.push_back({section, 0});
        } else {
            ++found->others;
        }
    }
    const auto fewer = [](const Group& g, const Group& h) { return g.others < h.others; };
    return std::max_element(groups.rbegin(), groups.rend(), fewer)->seed;
}

}  // namespace

void ZoAffineConstraintSolver::Calc(std::vector<ZoAffineConstraint>& constraints) {
    std::erase_if(constraints, [](const ZoAffineConstraint& each) { return each.IsInvalid(); });
    Sections sections;
    for (std::size_t i = 0; i < constraints.size(); ++i) {
        for (std::size_t j = i + 1; j < constraints.size(); ++j)
            AddSections(constraints[i], constraints[j], sections);
    }
    WriteLog(sections);
    std::erase_if(sections, [](const ZoPoint3d& section) { return !IsCandidate(section); });
    if (sections.empty()) return;

    const ZoPoint3d winner = SeedOfLargestGroup(sections);
    alpha = winner.x();
    beta = winner.y();
    if (beta == 0.0) return;
    a = 1.0 / beta;
    b = -alpha / beta;
    valid = true;
}
