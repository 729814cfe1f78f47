# Stage "writers": the plugins for AVIF and HEIF, JPEG XL and TIFF of stage "formats" with other settings of their
# writers; they are deployed in place of those. Sourced by tools/toolchain with $prefix (where it is installed) and
# $work (a scratch folder) set; stage "qt" is complete, and stage "codecs" is built when it is not there.
# Result: plugins/imageformats/*.dll, to be deployed.

# Stage "codecs" may have been built elsewhere and unpacked here, hence the option for pkg-config.
writers_build() {
  local codecs
  codecs=$(stage_prefix codecs)
  PKG_CONFIG_LIBDIR=$codecs/lib/pkgconfig cmake -S "$root/cmake/toolchain/writers" -B "$work/build" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$work/toolchain.cmake" -DPKG_CONFIG_ARGN=--define-prefix \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH="$(stage_prefix qt)/host" -DCODECS="$codecs" &&
  cmake --build "$work/build" --target qheif qjxl qtiff && cmake --install "$work/build" --strip
}

writers_stage() {
  provide codecs
  cat >"$work/toolchain.cmake" <<CMAKE
include("$(stage_prefix qt)/mingw64.cmake")
list(PREPEND CMAKE_FIND_ROOT_PATH "$(stage_prefix codecs)")
CMAKE
  step "writers: plugins (1 minute)" writers_build
}
