#!/usr/bin/env bash
# Builds the Debian package: installs what is missing, builds the programs
# (担当者登録, 担当者カード, staff-setup; no tests or benchmarks) in their own
# build folder and makes the package with cpack.
#
#   scripts/package.sh
#
# The build folder is $STAFF_PACKAGE_BUILD_DIR, by default build-package/ in
# the checkout; the package file is written there and its path printed last.
# Install it with: sudo apt install ./build-package/staffmaster_<version>-1_<arch>.deb
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_PACKAGE_BUILD_DIR:-$repo/build-package}"

bash "$repo/scripts/install-deps.sh"

cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF -DSTAFF_BUILD_BENCH=OFF
cmake --build "$build" -j2 --target staff_app report_app staff-setup

rm -f "$build"/*.deb
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$build"
rm -rf "$build/_CPack_Packages"

debs=("$build"/*.deb)
if [ "${#debs[@]}" -ne 1 ] || [ ! -f "${debs[0]}" ]; then
    echo "package: cpack made no package in $build" >&2
    exit 1
fi
echo "package: the Debian package is ${debs[0]}"
dpkg-deb -f "${debs[0]}" Package Version Depends
