#pragma once

#include <string>

#include <zorv/zorv.h>

/// What a photogrammetric project consists of, and its three forms: a text file of keywords, an archive, lists in
/// memory.
class Project : public LinkHdl {
  public:
    /// Reads a project file; the number of read errors, which are logged.
    int ReadText(const std::wstring& file);
    bool WriteText(const std::wstring& file) const;
    bool WriteArchive(const std::wstring& file) const;
    bool ReadArchive(const std::wstring& file);

    /// The library cameras of the photos, which need the trafos of their photo.
    void MakeCameraPairs();

    ZoCameraList cameras;
    ZoPhotoList photos;
    ZoPlaneList planes;
    ZoPointList points;

  private:
    long ReadPlane(ZoReaderObject* object);
};

/// Whether two projects hold the same: the host compares their archive forms.
bool SameProject(const Project& a, const Project& b);
