# Stage "codecs": what the image format plugins are made of, cross-built from Debian's source: the codecs as static
# archives, and two sources that hold plugins. Only stage "formats" needs it. Sourced by tools/toolchain with $prefix
# (where it is installed) and $work (a scratch folder) set; stage "qt" is complete.
# Result: lib/, include/, sources/ (of plugins), licenses/ (of everything that ends in a plugin), toolchain.cmake.
#
# Codecs are taken from the suite that gets security updates, never from the copies that other sources bundle:
# they are handed files from anywhere.

# source_archive FOLDER NAME SUITE VERSION-PREFIX [patched]: as source_package, for packages of which the mirror
# has lost a file. apt checks each file against the signed index all the same; what the .dsc would say beyond that
# is done here. With "patched" Debian's patches are fetched and applied.
source_archive() {
  local folder=$1 name=$2 suite=$3 wanted=$4 patched=${5:-} found patch
  found=$(APT_CONFIG="$folder/apt.conf" apt-get source --print-uris -t "$suite" "$name" 2>/dev/null |
    sed -n "s/.*[ /]${name}_\([^ ]*\)\.orig\.tar\.[a-z0-9]* .*/\1/p" | head -n 1)
  case "$found" in
    "$wanted"*) ;;
    *) echo "$name of $suite is '$found', this recipe was tried with $wanted"; return 1 ;;
  esac
  (cd "$folder" && APT_CONFIG="$folder/apt.conf" apt-get source --download-only --tar-only -t "$suite" "$name") &&
  rm -rf "${folder:?}/$name" && mkdir "$folder/$name" &&
  tar -C "$folder/$name" --strip-components=1 -xf "$(echo "$folder/${name}_$found".orig.tar.*)" || return 1
  [ "$patched" = patched ] || return 0
  (cd "$folder" && APT_CONFIG="$folder/apt.conf" apt-get source --download-only --diff-only -t "$suite" "$name") &&
  tar -C "$folder/$name" -xf "$(echo "$folder/${name}_$found"-*.debian.tar.xz)" || return 1
  while read -r patch; do
    patch -d "$folder/$name" -p1 -N <"$folder/$name/debian/patches/$patch" || return 1
  done < <(sed 's/[[:space:]]*#.*//; s/[[:space:]].*//; /^$/d' "$folder/$name/debian/patches/series")
}

codecs_fetch() {
  private_apt "$work" trixie bookworm &&
  source_package "$work" zlib trixie 1. &&
  source_archive "$work" libjpeg-turbo trixie 2.1 patched &&
  source_package "$work" tiff trixie 4.7 &&
  source_package "$work" libwebp trixie 1.5 &&
  source_package "$work" libde265 trixie 1.0 &&
  source_archive "$work" x265 trixie 4.1 &&
  source_archive "$work" aom trixie 3.12 patched &&
  source_package "$work" libheif trixie 1.19 &&
  source_package "$work" highway trixie 1.2 &&
  source_archive "$work" brotli trixie 1.1 &&
  source_package "$work" lcms2 trixie 2.16 &&
  source_package "$work" jpeg-xl trixie 0.11 &&
  source_archive "$work" kf6-kimageformats trixie 6.13 &&
  source_package "$work" qt6-imageformats bookworm 6.4
}

# Symbols marked for export from a DLL of the codec's own would be exported from the plugin instead, hence the
# definitions that say "static".
codecs_environment() {
  local flags
  cat >"$prefix/toolchain.cmake" <<CMAKE
include("$(stage_prefix qt)/mingw64.cmake")
list(PREPEND CMAKE_FIND_ROOT_PATH "$prefix")
CMAKE
  flags="-O2 -fstack-protector-strong -ffunction-sections -fdata-sections -ffile-prefix-map=$work=."
  flags="$flags -DLIBDE265_STATIC_BUILD -DLIBHEIF_STATIC_BUILD"
  flags="$flags -DJXL_STATIC_DEFINE -DJXL_THREADS_STATIC_DEFINE -DJXL_CMS_STATIC_DEFINE"
  export CFLAGS=$flags CXXFLAGS=$flags PKG_CONFIG_LIBDIR=$prefix/lib/pkgconfig
}

# codec NAME SOURCE OPTION...: builds and installs one codec that comes with a CMake file.
codec() {
  local name=$1 source=$2
  shift 2
  cmake -S "$work/$source" -B "$work/build/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$prefix/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF -Wno-dev "$@" &&
  cmake --build "$work/build/$name" && cmake --install "$work/build/$name"
}

# Debian's zlib has no resource file for a DLL, so only the static library is built.
codecs_zlib() {
  cmake -S "$work/zlib" -B "$work/build/zlib" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$prefix/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" &&
  cmake --build "$work/build/zlib" --target zlibstatic &&
  install -D -m 644 -t "$prefix/include" "$work/zlib/zlib.h" "$work/build/zlib/zconf.h" &&
  install -D -m 644 "$work/build/zlib/libzlibstatic.a" "$prefix/lib/libz.a" &&
  install -D -m 644 -t "$prefix/lib/pkgconfig" "$work/build/zlib/zlib.pc"
}

codecs_tiff_webp() {
  codecs_zlib &&
  codec libjpeg-turbo libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF &&
  codec libwebp libwebp -DWEBP_BUILD_ANIM_UTILS=OFF -DWEBP_BUILD_CWEBP=OFF -DWEBP_BUILD_DWEBP=OFF \
    -DWEBP_BUILD_GIF2WEBP=OFF -DWEBP_BUILD_IMG2WEBP=OFF -DWEBP_BUILD_VWEBP=OFF -DWEBP_BUILD_WEBPINFO=OFF \
    -DWEBP_BUILD_WEBPMUX=OFF -DWEBP_BUILD_EXTRAS=OFF &&
  codec tiff tiff -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF -Dcxx=OFF \
    -Dzlib=ON -Djpeg=ON -Dwebp=ON -Djbig=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dlzma=OFF -Dzstd=OFF
}

codecs_hevc() {
  codec libde265 libde265 -DENABLE_SDL=OFF -DENABLE_DECODER=OFF -DENABLE_ENCODER=OFF &&
  codec x265 x265/source -DENABLE_SHARED=OFF -DENABLE_CLI=OFF
}

codecs_av1() {
  codec aom aom -DENABLE_DOCS=OFF -DENABLE_EXAMPLES=OFF -DENABLE_TESTS=OFF -DENABLE_TOOLS=OFF
}

codecs_heif() {
  codec libheif libheif -DENABLE_PLUGIN_LOADING=OFF -DWITH_EXAMPLES=OFF -DWITH_GDK_PIXBUF=OFF \
    -DWITH_LIBDE265=ON -DWITH_X265=ON -DWITH_AOM_DECODER=ON -DWITH_AOM_ENCODER=ON -DWITH_OpenH264_DECODER=OFF \
    -DWITH_LIBSHARPYUV=OFF -DWITH_HEADER_COMPRESSION=OFF -DWITH_UNCOMPRESSED_CODEC=OFF
}

codecs_jxl() {
  codec highway highway -DHWY_ENABLE_TESTS=OFF -DHWY_ENABLE_EXAMPLES=OFF -DHWY_ENABLE_CONTRIB=OFF &&
  codec brotli brotli -DBROTLI_DISABLE_TESTS=ON &&
  (cd "$work/lcms2" && ./configure --host=x86_64-w64-mingw32 --prefix="$prefix" --disable-shared \
    --without-jpeg --without-tiff CC=x86_64-w64-mingw32-gcc-posix CXX=x86_64-w64-mingw32-g++-posix &&
    make -j"$(nproc)" -C src && make -C src install && make -C include install && make install-pkgconfigDATA) &&
  codec jpeg-xl jpeg-xl -DJPEGXL_FORCE_SYSTEM_BROTLI=ON -DJPEGXL_FORCE_SYSTEM_HWY=ON \
    -DJPEGXL_FORCE_SYSTEM_LCMS2=ON -DJPEGXL_ENABLE_SKCMS=OFF -DJPEGXL_ENABLE_TOOLS=OFF \
    -DJPEGXL_ENABLE_BENCHMARK=OFF -DJPEGXL_ENABLE_EXAMPLES=OFF -DJPEGXL_ENABLE_MANPAGES=OFF \
    -DJPEGXL_ENABLE_DOXYGEN=OFF -DJPEGXL_ENABLE_JNI=OFF -DJPEGXL_ENABLE_SJPEG=OFF -DJPEGXL_ENABLE_OPENEXR=OFF \
    -DJPEGXL_ENABLE_PLUGINS=OFF -DJPEGXL_ENABLE_JPEGLI=OFF -DJPEGXL_BUNDLE_LIBPNG=OFF
}

# The licence of a codec is the first of these files that its source has, and what it says about patents.
codecs_keep() {
  local source file
  mkdir -p "$prefix/sources" "$prefix/licenses" &&
  cp -r "$work/kf6-kimageformats/src/imageformats" "$prefix/sources/kimageformats" &&
  cp -r "$work/qt6-imageformats/src/plugins/imageformats" "$prefix/sources/qt-imageformats" &&
  cp "$work/kf6-kimageformats/LICENSES/LGPL-2.1-or-later.txt" "$prefix/licenses/kimageformats.txt" &&
  cp "$work/kf6-kimageformats/LICENSES/BSD-2-Clause.txt" "$prefix/licenses/kimageformats-bsd.txt" &&
  cp "$work/qt6-imageformats/LICENSES/LGPL-3.0-only.txt" "$prefix/licenses/qt-imageformats.txt" &&
  cp "$work/highway/LICENSE-BSD3" "$prefix/licenses/highway-bsd.txt" || return 1
  for source in aom brotli highway jpeg-xl lcms2 libde265 libheif libjpeg-turbo libwebp tiff x265 zlib; do
    for file in LICENSE LICENSE.md COPYING LICENCE README; do
      [ -e "$work/$source/$file" ] || continue
      cp "$work/$source/$file" "$prefix/licenses/$source.txt"
      break
    done
    [ -e "$prefix/licenses/$source.txt" ] || { echo "$source has no licence file"; return 1; }
    [ ! -e "$work/$source/PATENTS" ] || cp "$work/$source/PATENTS" "$prefix/licenses/$source-patents.txt"
  done
}

# In a shell of its own, so that the compiler flags stay here.
codecs_stage() (
  codecs_environment
  step "codecs: sources (1 minute)" codecs_fetch
  step "codecs: TIFF and WebP (1 minute)" codecs_tiff_webp
  step "codecs: HEVC (3 minutes)" codecs_hevc
  step "codecs: AV1 (2 minutes)" codecs_av1
  step "codecs: HEIF (1 minute)" codecs_heif
  step "codecs: JPEG XL (3 minutes)" codecs_jxl
  step "codecs: licences" codecs_keep
)
