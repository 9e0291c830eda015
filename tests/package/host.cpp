#include <cstdio>
#include <cstring>

#include <zorv/zorv.h>

int main() {
    if (ZoGetVersionNumber() != ZORV_VERSION_NUMBER || std::strcmp(ZoGetVersionText(), ZORV_VERSION_TEXT) != 0) {
        std::puts("headers and library differ in their version");
        return 1;
    }
    ZoPointList points;
    points.Add(ZoPoint(17, 1012.345, 2034.5, 99.125, 7));
    const eZoPointRWMask columns[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    points.SetMask(columns);
    if (!points.WriteFile(L"host.coo")) return 1;
    std::printf("zorv %s: %d point written\n", ZoGetVersionText(), points.Count());
}
