#include <cstdio>

#include <zorv/zorv.h>

int main(int count, char** names) {
    if (count != 2) return 2;
    const std::wstring file = string2wstring(names[1]);

    // A camera with radial distortion, lengths in mm.
    ZoCamera camera;
    camera.SetId(1);
    camera.SetName(L"Wide angle");
    camera.mode = ZoCamera::kClassicMode;
    camera.c = 24.35;
    camera.xh = 0.052;
    camera.yh = -0.031;
    camera.a1 = -4e-5;
    camera.a2 = 3e-8;
    camera.r0 = 12.0;
    ZoCameraList cameras;
    cameras.Add(camera);
    if (!cameras.WriteFile(file, false)) return 1;

    const ZoCameraList stored(file);
    const ZoCamera* const same = stored.Find(1);
    if (!same) return 1;
    // From the measured place in the image to the one without distortion, relative to the principal point, and back.
    double x = 6.247281;
    double y = 0.345479;
    same->Adjust(&x, &y);
    std::printf("corrected %.5f %.5f mm\n", x, y);
    same->InvAdjust(&x, &y);
    std::printf("measured %.3f %.3f mm\n", x, y);
}
