#pragma once

#include <string>

#include "report_page.h"
#include <zorv/zorv.h>

/// Planes and constructions on the facades of a survey: the points 100 to 199 lie on one facade, 200 to 299 on another.
class Facades {
  public:
    /// False when the points of the two groups do not lie on two planes that cross.
    bool Fit(const ZoPointList& survey);
    /// Writes both planes (.sip) and the log of their points.
    bool WriteFiles(const std::wstring& planeFile, const std::wstring& logFile);
    /// A line along the eaves, an arc on the ground and a rectangle on the first facade.
    void Construct(const ZoPointList& survey);

    void Print() const;
    /// A section with the figures and the first facade from the front; the picture gets that name.
    void AddTo(ReportPage& page, const std::wstring& picture) const;

  private:
    struct Facade {
        const char* name;
        unsigned int firstId;
        ZoCalcPlane fit;
    };
    /// What a construction came to, as text.
    struct Construction {
        std::string what;
        std::string result;
    };

    /// Between the two planes, at most a right angle, in gon.
    double Angle() const;

    Facade facades[2] = {{"A", 100, {}}, {"B", 200, {}}};
    ZoVector cornerPoint{0.0, 0.0, 0.0};
    ZoVector cornerDirection{0.0, 0.0, 0.0};
    std::vector<Construction> constructions;
};
