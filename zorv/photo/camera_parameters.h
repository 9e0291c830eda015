#pragma once

#include "zorv/photo/camera.h"

namespace zorv::detail {

/// Keywords of a full camera record.
namespace camera_key {
inline constexpr char kId[] = "ID";
inline constexpr char kName[] = "NAME";
inline constexpr char kMode[] = "MD";
inline constexpr char kC[] = "C";
inline constexpr char kCViva[] = "CV";
inline constexpr char kXh[] = "XH";
inline constexpr char kYh[] = "YH";
inline constexpr char kXhOlder[] = "X0";
inline constexpr char kYhOlder[] = "Y0";
inline constexpr char kXhViva[] = "XHV";
inline constexpr char kYhViva[] = "YHV";
inline constexpr char kR0[] = "R0";
inline constexpr char kRmax[] = "RM";
inline constexpr char kA1[] = "A1";
inline constexpr char kA2[] = "A2";
inline constexpr char kA3[] = "A3";
inline constexpr char kB1[] = "B1";
inline constexpr char kB2[] = "B2";
inline constexpr char kC1[] = "C1";
inline constexpr char kC2[] = "C2";
inline constexpr char kK1[] = "K1";
inline constexpr char kK5[] = "K5";
}  // namespace camera_key

struct CameraParameter {
    const char* keyword;
    double ZoCamera::*member;
};

/// All lengths and coefficients of a camera, in the order of the archive record.
inline constexpr CameraParameter kCameraParameters[] = {
    {camera_key::kC, &ZoCamera::c},
    {camera_key::kXh, &ZoCamera::xh},
    {camera_key::kYh, &ZoCamera::yh},
    {camera_key::kA1, &ZoCamera::a1},
    {camera_key::kA2, &ZoCamera::a2},
    {camera_key::kA3, &ZoCamera::a3},
    {"A4", &ZoCamera::a4},
    {camera_key::kR0, &ZoCamera::r0},
    {camera_key::kCViva, &ZoCamera::cViva},
    {camera_key::kXhViva, &ZoCamera::xhViva},
    {camera_key::kYhViva, &ZoCamera::yhViva},
    {camera_key::kC1, &ZoCamera::c1},
    {camera_key::kC2, &ZoCamera::c2},
    {camera_key::kB1, &ZoCamera::b1},
    {camera_key::kB2, &ZoCamera::b2},
    {"A5", &ZoCamera::a5},
    {"A6", &ZoCamera::a6},
    {camera_key::kK1, &ZoCamera::k1},
    {"K2", &ZoCamera::k2},
    {"K3", &ZoCamera::k3},
    {"K4", &ZoCamera::k4},
    {camera_key::kK5, &ZoCamera::k5},
    {"Omega", &ZoCamera::omega},
    {"SX1", &ZoCamera::sx1},
    {"SX2", &ZoCamera::sx2},
    {camera_key::kRmax, &ZoCamera::rmax},
};

}  // namespace zorv::detail
