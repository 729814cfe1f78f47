# Stage "positioning": Qt Positioning with its plugin for the Windows Runtime, which asks Windows for the place of this
# computer. Built from Debian's source against stage "qt"; the headers of Windows.Devices.Geolocation are those of
# trixie's mingw-w64 (the machine's own are older). Sourced by tools/toolchain with $prefix (where it is installed) and
# $work (a scratch folder) set; stage "qt" is complete.
# Result: bin/Qt6Positioning.dll, plugins/position/qtposition_winrt.dll, include/, lib/cmake/ and licenses/.

positioning_fetch() {
  local headers="$work/headers/usr/share/mingw-w64/include"
  private_apt "$work" trixie &&
  source_package "$work" qt6-positioning trixie 6.8.2 &&
  (cd "$work" && APT_CONFIG="$work/apt.conf" apt-get download mingw-w64-common && dpkg -x mingw-w64-common_*.deb headers) &&
  mkdir -p "$work/windows" &&
  cp -r "$headers"/windows.*.h "$headers"/ivectorchangedeventargs.h "$headers"/wrl "$headers"/wrl.h "$work/windows/" &&
  cp "$root/cmake/toolchain/positioning/windows_runtime.h" "$work/windows/" &&
  patch -d "$work/qt6-positioning" -p1 <"$root/cmake/toolchain/positioning/mingw.patch"
}

positioning_build() {
  cmake -S "$work/qt6-positioning" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$(stage_prefix qt)/mingw64.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DQT_HOST_PATH="$(stage_prefix qt)/host" -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DTEST_winrt_geolocation=ON -DCMAKE_CXX_FLAGS="-isystem $work/windows" &&
  cmake --build "$work/build" && cmake --install "$work/build" --strip &&
  rm "$prefix"/plugins/position/qtposition_{nmea,positionpoll}.dll &&
  mkdir -p "$prefix/licenses" &&
  cp "$work/qt6-positioning/LICENSES/LGPL-3.0-only.txt" "$prefix/licenses/qtpositioning.txt"
}

positioning_stage() {
  step "positioning: source" positioning_fetch
  step "positioning: library and plugin (1 minute)" positioning_build
}
