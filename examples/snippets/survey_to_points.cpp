#include <cstdio>

#include <zorv/zorv.h>

int main(int count, char** names) {
    if (count != 3) return 2;
    // Total station file to coordinates in metres; measured coordinates become control coordinates.
    ZoPointList points;
    if (points.ReadGsiFile(string2wstring(names[1]), true, eZoUnitM) == 0) return 1;

    // id, control code, x, y, z: one point a line, sixteen significant digits.
    const eZoPointRWMask columns[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    if (!points.WriteFile(string2wstring(names[2]), columns)) return 1;

    double distance = 0;
    const ZoPoint* nearest = points.FindNearest(ZoPoint(0, 1000.0, 2000.0, 101.6, 0), &distance);
    std::printf("%d points, nearest to the station %u at %.3f m\n", points.Count(), nearest->GetId(), distance);
}
