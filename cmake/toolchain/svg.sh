# Stage "svg": the image format plugin that reads SVG, from the SVG module of Qt 5.15 in Debian 12 (the one of Qt 6 is
# not served as a source), which svg/qt6.patch takes to Qt 6. The patch also keeps it from opening any other file than
# the picture: one in a picture could name a share of a foreign server. Sourced by tools/toolchain with $prefix (where
# it is installed) and $work (a scratch folder) set; stage "qt" is complete.
# Result: plugins/imageformats/qsvg.dll and licenses/, both to be deployed.

svg_fetch() {
  private_apt "$work" bookworm &&
  source_package "$work" qtsvg-opensource-src bookworm 5.15.8 &&
  patch -d "$work/qtsvg-opensource-src" -p1 <"$root/cmake/toolchain/svg/qt6.patch"
}

svg_build() {
  cmake -S "$root/cmake/toolchain/svg" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$(stage_prefix qt)/mingw64.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DQT_HOST_PATH="$(stage_prefix qt)/host" -DSOURCES="$work" &&
  cmake --build "$work/build" && cmake --install "$work/build" --strip &&
  mkdir -p "$prefix/licenses" &&
  cp "$work/qtsvg-opensource-src/LICENSE.LGPL3" "$prefix/licenses/qtsvg.txt"
}

svg_stage() {
  step "svg: source" svg_fetch
  step "svg: plugin (20 seconds)" svg_build
}
