#include "zorv/math/scan_line.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "zorv/core/number_cast.h"
#include "zorv/math/polygon.h"

using zorv::detail::SaturatedInt;

namespace {

void FreeChain(EdgeTableEntry*& chain) {
    while (chain) {
        const std::unique_ptr<EdgeTableEntry> entry(chain);
        chain = entry->next;
    }
}

/// Takes the entry that `place` points to out of its chain and frees it.
void Remove(EdgeTableEntry*& place) {
    const std::unique_ptr<EdgeTableEntry> entry(place);
    place = entry->next;
}

/// The number of steps, or less where it was raised after the table was made; -1 without a table.
int LastLine(const ZoScanLine& scan) {
    return std::min(scan.n, static_cast<int>(scan.edgeTable.size()) - 1);
}

EdgeTableEntry* CopyOf(const EdgeTableEntry* chain) {
    EdgeTableEntry* copy = nullptr;
    for (EdgeTableEntry** end = &copy; chain; chain = chain->next) {
        *end = std::make_unique<EdgeTableEntry>(*chain).release();
        (*end)->next = nullptr;
        end = &(*end)->next;
    }
    return copy;
}

}  // namespace

void EdgeTableEntry::Insert(EdgeTableEntry*& chain, EdgeTableEntry* entry) {
    EdgeTableEntry** place = &chain;
    while (*place && !(*place)->ShouldInsert(entry))
        place = &(*place)->next;
    entry->next = *place;
    *place = entry;
}

void EdgeTableEntry::InsertList(EdgeTableEntry*& chain, EdgeTableEntry* list) {
    EdgeTableEntry** end = &chain;
    while (*end)
        end = &(*end)->next;
    *end = list;
    Sort(chain);
}

void EdgeTableEntry::Sort(EdgeTableEntry*& chain) {
    EdgeTableEntry* entry = chain;
    while (entry && entry->next) {
        EdgeTableEntry* following = entry->next;
        if (entry->ShouldInsert(following)) {
            entry->next = following->next;
            Insert(chain, following);
        } else {
            entry = following;
        }
    }
}

void EdgeTableEntry::AddToAll_1m(EdgeTableEntry* chain) {
    for (; chain; chain = chain->next)
        chain->x += chain->dx;
}

void EdgeTableEntry::DeleteAll(EdgeTableEntry*& chain, int line) {
    for (EdgeTableEntry** place = &chain; *place;) {
        if ((*place)->last == line) {
            Remove(*place);
        } else {
            place = &(*place)->next;
        }
    }
}

ZoScanLine::ZoScanLine(ZoPolygon* polygonToScan, int steps, double from, double to)
    : polygon(polygonToScan), n(std::max(steps, 1)), step((to - from) / n), y0(from), y1(to) {
    CreateEdgeTable();
}

ZoScanLine::ZoScanLine(const ZoScanLine& other) {
    *this = other;
}

ZoScanLine& ZoScanLine::operator=(const ZoScanLine& other) {
    if (this == &other) return *this;
    FreeEdges();
    polygon = other.polygon;
    n = other.n;
    step = other.step;
    y0 = other.y0;
    y1 = other.y1;
    normalClipping = other.normalClipping;
    xmin = other.xmin;
    xmax = other.xmax;
    iY = other.iY;
    dy = other.dy;
    left = other.left;
    right = other.right;
    CopyEdges(other);
    return *this;
}

ZoScanLine::~ZoScanLine() {
    FreeEdges();
}

void ZoScanLine::init() {
    *this = ZoScanLine();
}

bool ZoScanLine::Callback_Line() {
    return true;
}

void ZoScanLine::FreeEdges() {
    for (EdgeTableEntry*& chain : edgeTable)
        FreeChain(chain);
    edgeTable.clear();
    FreeChain(activeEdges);
}

void ZoScanLine::CopyEdges(const ZoScanLine& other) {
    edgeTable.reserve(other.edgeTable.size());
    for (const EdgeTableEntry* chain : other.edgeTable)
        edgeTable.push_back(CopyOf(chain));
    activeEdges = CopyOf(other.activeEdges);
}

bool ZoScanLine::CreateEdgeTable() {
    if (!polygon || !polygon->First() || step == 0.0 || !std::isfinite(step)) return false;
    FreeEdges();
    n = std::max(n, 1);
    edgeTable.resize(static_cast<std::size_t>(n) + 2, nullptr);

    const ZoPoint* const first = polygon->First();
    const ZoPoint* const last = polygon->Points.Last();
    const auto after = [first](const ZoPoint* point) { return point->NextConst() ? point->NextConst() : first; };
    const auto before = [last](const ZoPoint* point) { return point->PreviousConst() ? point->PreviousConst() : last; };

    xmin = first->x;
    xmax = first->x;
    for (const ZoPoint* point = first; point; point = point->NextConst()) {
        xmin = std::min(xmin, point->x);
        xmax = std::max(xmax, point->x);

        const ZoPoint* const next = after(point);
        const bool upward = point->y <= next->y;
        const ZoPoint& low = upward ? *point : *next;
        const ZoPoint& high = upward ? *next : *point;

        const double height = high.y - low.y;
        const double exactLine = (low.y - y0) / step;
        int line = SaturatedInt(exactLine);
        auto edge = std::make_unique<EdgeTableEntry>();
        edge->dx = std::fabs(height) > std::fabs(step) ? (high.x - low.x) / height * step : 0.0;
        edge->last = SaturatedInt((high.y - y0) / step);
        edge->x = edge->dx * (line - exactLine) + low.x;

        // Where the neighbour at the low end goes on downward, the vertex belongs to the neighbour.
        const ZoPoint* const neighbour = upward ? before(point) : after(next);
        if (low.y > neighbour->y && line <= n) {
            edge->x += edge->dx;
            ++line;
        }
        if (line < 0 && edge->last >= 0) {
            edge->x += edge->dx * -static_cast<double>(line);
            line = 0;
        }
        ToEdgeTable(edge.release(), line);
    }
    return true;
}

void ZoScanLine::ToEdgeTable(EdgeTableEntry* entry, int line) {
    std::unique_ptr<EdgeTableEntry> owned(entry);
    if (!entry || line < 0 || line > LastLine(*this) || entry->last < line) return;
    EdgeTableEntry::Insert(edgeTable[static_cast<std::size_t>(line)], owned.release());
}

bool ZoScanLine::Process() {
    if (step == 0.0 || !std::isfinite(step)) return false;
    const auto begin = std::find_if(edgeTable.begin(), edgeTable.end(), [](const auto* chain) { return chain; });
    if (begin == edgeTable.end()) return false;

    FreeChain(activeEdges);
    iY = static_cast<int>(begin - edgeTable.begin());
    dy = iY * step + y0;
    for (const int last = LastLine(*this); iY <= last; ++iY, dy += step) {
        if (EdgeTableEntry*& starting = edgeTable[static_cast<std::size_t>(iY)]) {
            EdgeTableEntry::InsertList(activeEdges, std::exchange(starting, nullptr));
        }
        if (activeEdges) {
            FixActitveEdgeTable();
            --iY;
            VisitSpans();
            ++iY;
        }
        EdgeTableEntry::DeleteAll(activeEdges, iY);
        EdgeTableEntry::AddToAll_1m(activeEdges);
        EdgeTableEntry::Sort(activeEdges);
    }
    return true;
}

void ZoScanLine::VisitSpans() {
    if (!normalClipping) {
        left = xmin;
        right = xmax;
        Callback_Line();
        return;
    }
    for (const EdgeTableEntry* edge = activeEdges; edge && edge->next; edge = edge->next->next) {
        left = edge->x - 0.5;
        right = edge->next->x + 0.5;
        Callback_Line();
    }
}

void ZoScanLine::FixActitveEdgeTable() {
    EdgeTableEntry* const e1 = activeEdges;
    EdgeTableEntry* const e2 = e1 ? e1->next : nullptr;
    EdgeTableEntry* const e3 = e2 ? e2->next : nullptr;
    if (!e3 || e3->next) return;
    if (e1->last == 0) {
        Remove(activeEdges);
    } else if (e2->last == 0 || e3->last != 0) {
        e3->last = std::max(e2->last, e3->last);
        Remove(e1->next);
    } else {
        Remove(e2->next);
    }
}
