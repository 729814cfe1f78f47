# Stage "libraries": what programs of the project link as static archives: GIFLIB, the QR code generator and the QR code
# reader of ZBar, which judges what the generator's codes look like. Sourced by tools/toolchain with $prefix (where it is
# installed) and $work (a scratch folder) set; stage "qt" is complete.
# Result: lib/, include/, licenses/ (to be deployed).

# For source_archive.
. "$root/cmake/toolchain/codecs.sh"

libraries_fetch() {
  private_apt "$work" bookworm &&
  source_package "$work" giflib bookworm 5.2.1 &&
  source_package "$work" zbar bookworm 0.23.92 &&
  source_archive "$work" qr-code-generator bookworm 1.8.0
}

# The QR code generator has its licence at the top of its header alone.
libraries_build() {
  cmake -S "$root/cmake/toolchain/libraries" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$(stage_prefix qt)/mingw64.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" -DSOURCES="$work" &&
  cmake --build "$work/build" && cmake --install "$work/build" &&
  mkdir -p "$prefix/licenses" &&
  cp "$work/giflib/COPYING" "$prefix/licenses/giflib.txt" &&
  cat "$work/zbar/COPYING" "$work/zbar/LICENSE.md" >"$prefix/licenses/zbar.txt" &&
  sed '/\*\//q' "$work/qr-code-generator/cpp/qrcodegen.hpp" >"$prefix/licenses/qrcodegen.txt" &&
  grep -q 'MIT License' "$prefix/licenses/qrcodegen.txt"
}

libraries_stage() {
  step "libraries: sources" libraries_fetch
  step "libraries: GIF and QR codes (20 seconds)" libraries_build
}
