#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/las_point.h"
#include "zorv/cloud/las/point_source.h"
#include "zorv/core/file_bytes.h"

/// Reads LAS and LAZ files. The operations that a host of LASlib knows have the same names here.
namespace zorv::las {

/// The points of an open file, in the order of the file.
class LASreader {
  public:
    /// Reads the next point into `point`; false when there is none, or none that the file's bytes still tell.
    bool read_point();
    /// Reads the next points, `point` apart, and returns how many; fewer than asked only at the end.
    std::size_t read_points(std::span<LASpoint> points);
    /// Gives the file back; there are no more points then.
    void close();

    LASheader header;
    LASpoint point;            ///< as read_point left it
    std::int64_t npoints = 0;  ///< the header's count, at most what the bytes of the file can hold
    std::int64_t p_count = 0;  ///< points read so far

  private:
    friend class LASreadOpener;

    bool Open(const std::wstring& path);

    std::unique_ptr<detail::FileBytes> file;
    std::unique_ptr<PointSource> source;
    std::uint64_t left = 0;  // of the header's count
    std::unique_ptr<LASpoint[]> block;
    std::size_t blockNext = 0;
    std::size_t blockEnd = 0;
};

class LASreadOpener {
  public:
    /// UTF-8; with null or an empty name there is nothing to open.
    void set_file_name(const char* name) { fileName = name ? name : ""; }
    /// Whether there is a file to open.
    bool active() const { return !fileName.empty(); }
    /// A reader at the first point, or null when the file cannot be read as LAS or LAZ.
    std::unique_ptr<LASreader> open() const;

  private:
    std::string fileName;
};

}  // namespace zorv::las
