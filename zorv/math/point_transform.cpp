#include "zorv/math/matrix.h"
#include "zorv/math/vector3d.h"
#include "zorv/points/point_list.h"

ZoVector ZoPoint::GetAsVector() const {
    return {x, y, z};
}

bool ZoMatrix::PTrans2D(ZoPoint* point) const {
    return PTrans2D(&point->x, &point->y);
}

bool ZoMatrix::PTrans2D(ZoVector3d* v) const {
    return PTrans2D(&v->x(), &v->y());
}

bool ZoMatrix::PTrans3D(ZoPoint* point) const {
    return PTrans3D(&point->x, &point->y, &point->z);
}

bool CalcNormVect(ZoVector* normal, const ZoMatrix& m) {
    ZoVector image[3] = {
        m * ZoVector(0.0, 0.0, 0.0, 1.0),
        m * ZoVector(1.0, 0.0, 0.0, 1.0),
        m * ZoVector(0.0, 1.0, 0.0, 1.0),
    };
    for (const ZoVector& point : image) {
        if (point[4] == 0.0) return false;
    }
    for (ZoVector& point : image) {
        point /= point[4];
        point.ChangeType(eZoVectorXYZ);
    }
    *normal = ((image[1] - image[0]) % (image[2] - image[0])).Normalize();
    return true;
}

int Transform2D(ZoPointList* list, const ZoMatrix& m) {
    int count = 0;
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next(), ++count)
        m.PTrans2D(point);
    return count;
}

int Transform3D(ZoPointList* list, const ZoMatrix& m) {
    int count = 0;
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next(), ++count)
        m.PTrans3D(point);
    return count;
}
