#include <cstdio>

#include <zorv/zorv.h>

/// An upright or level plane a x + b y + c z + d = 0 with a normal of unit length.
static ZoPlane Face(double a, double b, double c, double d) {
    ZoPlane plane;
    plane.A() = a;
    plane.B() = b;
    plane.C() = c;
    plane.D() = d;
    return plane;
}

int main(int count, char** names) {
    if (count != 3) return 2;
    ZoPointCloudContainer clouds;
    ZoPointCloudReadResult read;
    if (!clouds.ReadPtsFile(string2wstring(names[1]), read)) return 1;
    ZoPointCloud& cloud = *clouds.First();

    // All within 2 m of the vertical through (5, 4): the space that four planes with normals inwards enclose.
    Zo3dSelectVolume volume;
    volume.SetOffset(ZoPoint3d(5.0, 4.0, 0.0));  // the planes are relative to it
    volume.SetPlane(0, Face(1, 0, 0, 2));
    volume.SetPlane(1, Face(-1, 0, 0, 2));
    volume.SetPlane(2, Face(0, 1, 0, 2));
    volume.SetPlane(3, Face(0, -1, 0, 2));
    volume.StartPyramid();
    const std::size_t selected = cloud.SelectPoints(volume);

    // Only the selection stays. UndoDelete would bring the others back.
    cloud.InvertSelection();
    const std::size_t removed = cloud.DeleteSelectedPoints();
    if (clouds.Write(string2wstring(names[2])) != 1) return 1;

    ZoPointCloudContainer stored;
    if (!stored.Read(string2wstring(names[2]), read)) return 1;
    std::printf("%zu selected, %zu removed, %zu stored\n", selected, removed, stored.First()->Size());
}
