# Third-party libraries. All of them stay inside the sources; a host needs none of their headers.

find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(pugixml REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(minizip REQUIRED IMPORTED_TARGET minizip)

# Does the geodesy: UTM, UPS, MGRS and transverse Mercator to nanometres.
pkg_check_modules(geographiclib REQUIRED IMPORTED_TARGET geographiclib)

# Deflates and inflates archive items about twice as fast as zlib, with the same bytes for any unzip program.
pkg_check_modules(libdeflate IMPORTED_TARGET libdeflate)

# Parallel loops; without it they run on one thread, with the same results.
find_package(OpenMP)

# Reads LAS and LAZ where it is installed; else the reader in zorv/cloud/las does.
find_package(LASlib CONFIG QUIET)
