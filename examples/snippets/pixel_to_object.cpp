#include <cstdio>

#include <zorv/zorv.h>

/// What this host takes from a project file: the photos with their cameras, and the planes.
struct Project : LinkHdl {
    void Read(const std::wstring& file) {
        ZoReader reader(file);
        reader.RegisterObject(ZoReaderObject("PHOTO", Link(&photos, &ZoPhotoList::AddPhoto)));
        reader.RegisterObject(ZoReaderObject("PLANE", Link(this, &Project::ReadPlane)));
        reader.DoProcess(false);  // passes what else stands there
    }
    long ReadPlane(ZoReaderObject* object) { return planes.AddPlane(object) != nullptr; }

    ZoPhotoList photos;
    ZoPlaneList planes;
};

int main(int count, char** names) {
    if (count != 2) return 2;
    Project project;
    project.Read(string2wstring(names[1]));
    ZoPhoto* const photo = project.photos.Find(1);
    const ZoPlane* const facade = project.planes.First();
    if (!photo || !facade) return 1;
    // The camera of a library model, which this photo may have, is made from the photo's fields.
    photo->SetZorvLibAutoDataFromInternalData();

    // Point 101 at column 4730.02 and row 3278.34, rows from the top as image viewers count them.
    ZoPoint pixel(101, 4730.02, 3278.34, 0.0, 0);
    photo->PixelRks_Lks(&pixel);        // rows from the bottom
    photo->AddImo(pixel, eDigiToBiko);  // mm in the image plane, kept as a measurement of the photo

    ZoPoint object;
    if (!photo->CalcSip(&object, *facade, 101, false)) return 1;
    std::printf("point %u: %.3f %.3f %.3f\n", object.GetId(), object.x, object.y, object.z);
}
