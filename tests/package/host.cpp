#include <cstdio>

#include <zorv/zorv.h>

int main() {
    ZoPointList points;
    points.Add(ZoPoint(17, 1012.345, 2034.5, 99.125, 7));
    const eZoPointRWMask columns[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    points.SetMask(columns);
    if (!points.WriteFile(L"host.coo")) return 1;
    std::printf("%d point written\n", points.Count());
}
