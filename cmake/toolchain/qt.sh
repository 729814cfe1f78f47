# Stage "qt": Qt 6.8 for Windows, cross-built from Debian's patched source. Sourced by tools/toolchain with
# $prefix (where it is installed) and $work (a scratch folder) set.
# Result: host/ (moc, rcc, uic ...), target/ (DLLs, headers, plugins), uiautomation/ (headers), mingw64.cmake.

qt_fetch() {
  private_apt "$work" trixie &&
  source_package "$work" qt6-base trixie 6.8.2 &&
  (cd "$work" && APT_CONFIG="$work/apt.conf" apt-get download mingw-w64-common && dpkg -x mingw-w64-common_*.deb headers)
}

qt_host() {
  cmake -S "$work/qt6-base" -B "$work/host" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$prefix/host" -DBUILD_SHARED_LIBS=OFF -DFEATURE_gui=OFF -DFEATURE_widgets=OFF \
    -DFEATURE_network=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_testlib=OFF -DFEATURE_concurrent=OFF \
    -DFEATURE_icu=OFF -DFEATURE_glib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_zlib=OFF -DFEATURE_qmake=OFF \
    -DQT_UNITY_BUILD=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF &&
  cmake --build "$work/host" && cmake --install "$work/host" --strip
}

# Stack clash protection crashes GCC 12 for mingw, and control-flow protection is not there either.
qt_target() {
  local system
  mkdir -p "$prefix/uiautomation" &&
  cp "$work"/headers/usr/share/mingw-w64/include/uiautomation*.h "$prefix/uiautomation/" &&
  cp "$root/cmake/toolchain/mingw64.cmake" "$prefix/" || return 1
  for system in zlib pcre2 harfbuzz freetype jpeg png doubleconversion; do
    set -- "$@" "-DFEATURE_system_$system=OFF"
  done
  cmake -S "$work/qt6-base" -B "$work/target" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$prefix/mingw64.cmake" -DCMAKE_INSTALL_PREFIX="$prefix/target" \
    -DQT_HOST_PATH="$prefix/host" -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DBUILD_SHARED_LIBS=ON \
    -DQT_UNITY_BUILD=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DINPUT_opengl=no -DFEATURE_opengl=OFF -DFEATURE_vulkan=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF \
    -DFEATURE_printsupport=OFF -DFEATURE_tabletevent=OFF -DFEATURE_qmake=OFF -DFEATURE_pkg_config=OFF \
    -DFEATURE_relocatable=ON -DFEATURE_stack_clash_protection=OFF -DFEATURE_intelcet=OFF "$@" &&
  cmake --build "$work/target" && cmake --install "$work/target" --strip
}

qt_stage() {
  step "qt: sources (1 minute)" qt_fetch
  step "qt: host tools (4 minutes)" qt_host
  step "qt: Windows libraries (13 minutes)" qt_target
}
