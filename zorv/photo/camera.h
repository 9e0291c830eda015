#pragma once

#include <cmath>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "zorv/core/flag.h"
#include "zorv/export.h"

class CZipWrapper;
class ZoCameraCalibEntry;
class ZoCamPair;
class ZoPhoto;
class ZoPoint;
class ZoPointList;
class ZoReaderObject;

namespace ZorvLibAuto {
class Camera;
}

/// The interior orientation of a photo: camera constant, principal point and lens distortion.
///
/// Adjust takes a point from raw to corrected image coordinates, InvAdjust goes back. Both are in mm in the image
/// plane; a1, a2, a3 are in 1/mm^2, 1/mm^4, 1/mm^6, and a distortion dr is relative, without unit.
///
/// The mode tells the generation of the camera. Modes 0 and 1 have their formulas here. Modes 4 to 17 are models of the
/// library camera and need a camera pair (see zorv/photo/camera_pair.h) to adjust anything:
///
///     mode  model of the library camera               parameters
///     0     24 Zorv                                   xh, yh, a1, a2, r0
///     1     25 ZorvViva                               as mode 0, and cViva, xhViva, yhViva
///     3     none, an ideal pinhole                    c
///     4      0 SimplePinhole                          c, k1 to k5
///     5      1 Pinhole                                as 4, and cViva
///     6      2 Pinhole_Simple_Radial                  as 4, and a1
///     7     10 Fisheye_Simple_Radial                  as 4, and a1
///     8      3 Pinhole_Radial                         as 4, and a1, a2
///     11    11 Fisheye_Radial                         as 4, and a1, a2
///     12     6 Pinhole_Radial_Tangential              as 5, and a1, a2, c1, c2
///     13     7 Fisheye                                as 5, and a1 to a4
///     14     8 Pinhole_OpenCV_Radial_Tangential       as 5, and a1 to a6, c1, c2
///     15     9 Pinhole_FOV                            as 5, and omega
///     16    12 Fisheye_ThinPrism                      as 5, and a1 to a4, c1, c2, sx1, sx2
///     17    28 Pinhole_BLK_Radial_Tangential          as 5, and a1, a2, a3, c1, c2
///
/// Inverting modes 0 and 1 goes through a table, which all cameras of one id and c in the process share. It is made at
/// the first InvAdjust and sees no later change of the other parameters: call DeleteInvAdjustTables after one.
///
/// A camera and the tables have no lock. InvAdjust writes the memory of the last inversion and may make a table.
class ZORV_API ZoCamera : public TZoFlagNode<ZoCamera> {
  public:
    static constexpr std::uint32_t kClassicMode = 0;
    static constexpr std::uint32_t kInstrumentMode = 1;
    static constexpr std::uint32_t kPinholeMode = 3;

    ZoCamera();
    /// Copies the flags too, and the camera pair.
    ZoCamera(const ZoCamera& other);
    /// A classic camera. The name is UTF-8.
    ZoCamera(unsigned int number, double constant, double px, double py, double radial1, double radial2,
             double zeroRadius, const char* cameraName);
    /// Reads at once, by ReadFullData or by Read, and throws what that throws.
    ZoCamera(ZoReaderObject* object, bool fullData);
    ~ZoCamera() override;

    ZoCamera& operator=(const ZoCamera& other);
    /// Takes id, name, mode and parameters and forgets the last inversion; the flags stay. A camera pair of the other
    /// is copied; when it has none, the own one stays. A camera set to itself stays as it is.
    void Set(const ZoCamera& other);

    bool IsOldZorv() const { return mode == kClassicMode; }
    bool IsTs15() const { return mode == kInstrumentMode; }
    bool IsPinholeCamera() const { return mode == kPinholeMode; }
    void SetPinholeCamera() { mode = kPinholeMode; }
    /// Makes it the camera of an instrument: the former constant moves to cViva, the principal point is the second one.
    void SetTs15(double constant, double px, double py);
    /// Whether it has an id and a constant.
    bool IsValid() const { return id != 0 && c != 0.0; }

    static double Calc_r(double x, double y) { return std::sqrt(x * x + y * y); }
    /// The distortion without the exception at the centre.
    double Calcd(double x, double y) const;
    /// a1 (r^2 - r0^2) + a2 (r^4 - r0^4); 0 at the centre.
    double CalcdrA1A2(double r) const;
    double CalcdrA1A2(double x, double y) const { return CalcdrA1A2(Calc_r(x, y)); }
    /// The same with a3 (r^6 - r0^6).
    double CalcdrA1A2A3(double r) const;
    double CalcdrA1A2A3(double x, double y) const { return CalcdrA1A2A3(Calc_r(x, y)); }
    /// For the plot of a distortion curve: dr in modes 0 and 1, else how far the camera pair shifts x, 0 without one.
    double Calc_drForGraph(double x, double y) const;
    /// The sum of the distances of both principal points from the origin.
    double GetXhYhRadius() const;

    /// From raw to corrected image coordinates, in place. False, and nothing changes, for a camera of id 0, for a mode
    /// that has neither formula nor camera pair, and where the camera pair gives no finite point. The last holds for
    /// InvAdjust too.
    bool Adjust(double* x, double* y) const;
    bool Adjust(ZoPoint* point) const;
    /// All points of a list, whatever becomes of each. False for null only.
    bool Adjust(ZoPointList* list) const;

    /// From corrected to raw image coordinates, in place. False, and nothing changes, for a camera of id 0 and for a
    /// point outside the table. In modes 0 and 1 the table reaches rmax to each side, or 30 mm and 8 mm when that is 0,
    /// and its answer is good to a fraction of its step, 1/390 of the reach: the smaller, the weaker the distortion. A
    /// mode 3 camera without a pair leaves the point and answers true; other modes without a pair iterate on a1, a2,
    /// r0.
    bool InvAdjust(double* x, double* y) const;
    bool InvAdjust(ZoPoint* point) const;
    bool InvAdjust(ZoPointList* list) const;
    /// Frees the tables of all cameras in the process.
    static void DeleteInvAdjustTables();

    /// Fills a digital camera from a calibration; null does nothing. The camera pair is not made.
    void SetFromCalibEntry(const ZoCameraCalibEntry* entry);

    /// Makes the camera pair from the parameters; the photo, or null, gives the matrices between mm and pixels. Modes
    /// 0 and 1 get one only with `fromClassic` and a photo. Modes 2 and 3 keep what they have. A mode above that has no
    /// pair afterwards when it has no model, or when image size or pixel size are not positive.
    void CreateLibAutoCam(ZoPhoto* photo, bool fromClassic);
    /// The part of it for modes 0 and 1: whether it made a pair. False, and nothing changes, also for a photo whose
    /// pixels are turned against its image coordinates, and without a finite focal length in pixels.
    bool CreateLibAutoCamFromZorvCamera(ZoPhoto* photo);
    /// Takes id, mode and parameters of a library camera and makes the camera pair; lengths become mm of the photo.
    /// Modes 0 and 1 have no pair then. Unless libAutoFlags is 0 the name becomes that of the model, a local one first.
    /// Null does nothing. Of a camera without a model only id and image size are taken: the mode stays, the parameters
    /// become 0, the name empty unless libAutoFlags is 0 or there is a local one, and the pair goes.
    void SetFromLibAuto(const ZorvLibAuto::Camera* camera, ZoPhoto* photo);
    /// The camera pair, which belongs to the camera, or null.
    ZoCamPair* GetCamPair() const { return camPair.get(); }
    void DeleteCamPair();
    /// A name of the host's for a model of the library camera; empty when there is none. Process-wide.
    static std::wstring GetLocalAutoLibName(int model);
    /// False for a null name.
    static bool SetLocalAutoLibName(int model, const wchar_t* name);

    /// Simple text form: id, c, xh, yh, a1, a2, r0, name. c becomes positive and rmax 2.1 r0. Returns 1; throws
    /// ZoParserStatus, with the values before the offending token taken.
    long Read(ZoReaderObject* object);
    /// Keyword form, up to the end of the block, in any order. A camera without an RM gets the rmax 2.1 r0. Returns 1.
    long ReadFullData(ZoReaderObject* object);
    /// These three write with 17 significant digits; not-a-number and infinity become 0.
    std::ostream& Write(std::ostream& stream) const;
    /// What ReadFullData takes, on one line or, with `lines`, on several.
    std::ostream& WriteFullData(std::ostream& stream, bool lines) const;
    /// The keywords of what mode 1 has beyond mode 0: the second constant and principal point.
    std::ostream& WriteTS15Data(std::ostream& stream) const;
    /// The columns id, |c|, xh, yh, a1, a2, r0 for the adjustment program Gentri, without a line end. With a camera
    /// pair all behind |c| are 0.
    std::ostream& WriteGentriFormat(std::ostream& stream) const;
    /// Archive record: ZoObject, flags, the parameters, the mode. Reading makes rmax 2.1 r0.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    /// One line on the debug channel in modes 0, 1 and 3.
    void DbgPrintf(const char* prefix) const;

    std::uint32_t mode = kClassicMode;
    double c = 0.0;   ///< camera constant in mm
    double xh = 0.0;  ///< principal point in mm
    double yh = 0.0;
    double a1 = 0.0;  ///< radial distortion
    double a2 = 0.0;
    double r0 = 0.0;      ///< radius in mm without radial distortion
    double cViva = 0.0;   ///< mode 1: constant of the instrument's own camera; library models: fy, in mm
    double xhViva = 0.0;  ///< second principal point in mm, of mode 1
    double yhViva = 0.0;
    double a3 = 0.0;  ///< further radial distortion
    double a4 = 0.0;
    double a5 = 0.0;
    double a6 = 0.0;
    double c1 = 0.0;  ///< tangential distortion
    double c2 = 0.0;
    double b1 = 0.0;  ///< affine distortion
    double b2 = 0.0;
    double k1 = 0.0;     ///< image width in pixels
    double k2 = 0.0;     ///< image height in pixels
    double k3 = 0.0;     ///< pixel size in mm
    double k4 = 0.0;     ///< column of the principal point in pixels
    double k5 = 0.0;     ///< row of the principal point in pixels
    double omega = 0.0;  ///< field of view parameter of Pinhole_FOV
    double sx1 = 0.0;    ///< thin prism parameters of Fisheye_ThinPrism
    double sx2 = 0.0;
    double rmax = 0.0;             ///< largest useful image radius in mm
    mutable double lastInX = 0.0;  ///< the last inversion; in no file
    mutable double lastInY = 0.0;
    mutable double lastOutX = 0.0;
    mutable double lastOutY = 0.0;
    std::int32_t libAutoModel = 0;  ///< model number of a calibration
    std::int32_t libAutoFlags = 0;  ///< handed to the library camera
    std::unique_ptr<ZoCamPair> camPair;

  protected:
    /// The shift by the distortion at (x, y).
    void CalcDistortA1A2(double& dx, double& dy, double x, double y) const;

  private:
    /// The reach of the table, beyond which nobody measures, as a multiple of r0.
    static constexpr double kReachOfZeroRadius = 2.1;

    bool HasFormula() const { return IsOldZorv() || IsTs15(); }
    void RememberInversion(double inX, double inY, double outX, double outY) const;
    bool InvertByTable(double* x, double* y) const;
    bool InvertByIteration(double* x, double* y) const;
};
