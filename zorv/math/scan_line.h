#pragma once

#include <cstdint>
#include <vector>

#include "zorv/export.h"

class ZoPolygon;

/// One polygon edge during scan conversion, in a chain sorted by x.
class ZORV_API EdgeTableEntry {
  public:
    void init() { *this = EdgeTableEntry(); }

    std::int32_t last = 0;           ///< last scan line of the edge
    double x = 0.0;                  ///< on the line at hand
    double dx = 0.0;                 ///< change of x from line to line
    EdgeTableEntry* next = nullptr;  ///< owned by the chain

  protected:
    friend class ZoScanLine;

    /// Whether this entry stands behind the other.
    bool ShouldInsert(const EdgeTableEntry* entry) const { return x > entry->x; }

    // A chain is named by the pointer to its first entry.

    /// Puts the entry in front of the first one with a strictly greater x.
    static void Insert(EdgeTableEntry*& chain, EdgeTableEntry* entry);
    /// Appends the list and sorts.
    static void InsertList(EdgeTableEntry*& chain, EdgeTableEntry* list);
    /// Takes entries that are out of order out and inserts them anew.
    static void Sort(EdgeTableEntry*& chain);
    /// One line on: x += dx for all.
    static void AddToAll_1m(EdgeTableEntry* chain);
    /// Frees the entries that end on the line.
    static void DeleteAll(EdgeTableEntry*& chain, int line);
};

/// Scan conversion of a polygon by an active edge table: visits its spans line by line, from y0 to y1 in n steps.
///
/// A subclass does its work in Callback_Line, where iY, dy, left and right tell the span. An object serves for one run
/// of Process, which uses the edge table up. The polygon must outlive it. (J. Foley, A. van Dam, S. Feiner, J. Hughes,
/// "Computer Graphics", 2nd edition, section 3.6.)
class ZORV_API ZoScanLine {
  public:
    ZoScanLine() = default;
    /// A number of steps below 1 counts as 1.
    ZoScanLine(ZoPolygon* polygonToScan, int steps, double from, double to);
    ZoScanLine(const ZoScanLine& other);
    ZoScanLine& operator=(const ZoScanLine& other);
    virtual ~ZoScanLine();

    /// Visits the lines from the first that has an edge to the last. False when none has, or when the step is 0 or
    /// not finite.
    virtual bool Process();
    /// Called for each span; the result is not looked at.
    virtual bool Callback_Line();

    /// Back to the state of a new object without polygon.
    void init();
    /// true (the default): the spans inside the polygon; false: one span over its whole extent on each line.
    void SetNormalClippingMode(bool on) { normalClipping = on; }

    ZoPolygon* polygon = nullptr;
    int n = 1;          ///< scan steps
    double step = 0.0;  ///< y distance of two lines
    double y0 = 0.0;
    double y1 = 0.0;
    std::vector<EdgeTableEntry*> edgeTable;  ///< chains of the edges that begin on line 0 to n + 1, owned
    EdgeTableEntry* activeEdges = nullptr;   ///< owned
    bool normalClipping = true;
    double xmin = 1.7976931348623157e308;  ///< extent of the polygon in x
    double xmax = 2.2250738585072014e-308;
    int iY = 0;         ///< in Callback_Line: one below the line
    double dy = 0.0;    ///< y of the line
    double left = 0.0;  ///< span, widened by half a unit on either side when clipped
    double right = 0.0;

  protected:
    /// False for a polygon without points and for a step that is 0 or not finite. A number of steps below 1 becomes 1.
    bool CreateEdgeTable();
    /// Takes the entry over: into the table when its first line lies there and is not behind its last.
    void ToEdgeTable(EdgeTableEntry* entry, int line);
    /// Repairs a line with exactly three edges, which leave a span open.
    void FixActitveEdgeTable();

  private:
    void FreeEdges();
    void CopyEdges(const ZoScanLine& other);
    void VisitSpans();
};
