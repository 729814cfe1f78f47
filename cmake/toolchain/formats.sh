# Stage "formats": the image format plugins that Qt itself does not bring: AVIF, HEIC, HEIF, JPEG XL, PSD, TIFF and
# WebP, each one DLL with its codecs inside. Sourced by tools/toolchain with $prefix (where it is installed) and $work
# (a scratch folder) set; stage "qt" is complete, and stage "codecs" is built when it is not there.
# Result: plugins/imageformats/*.dll and licenses/, both to be deployed.

# plugins_build SOURCE [TARGET...]: for stage "writers" as well. Stage "codecs" may have been built elsewhere and unpacked
# here, hence the tool chain file and the option for pkg-config.
plugins_build() {
  local source=$1 codecs
  shift
  codecs=$(stage_prefix codecs)
  cat >"$work/toolchain.cmake" <<CMAKE
include("$(stage_prefix qt)/mingw64.cmake")
list(PREPEND CMAKE_FIND_ROOT_PATH "$codecs")
CMAKE
  PKG_CONFIG_LIBDIR=$codecs/lib/pkgconfig cmake -S "$root/cmake/toolchain/$source" -B "$work/plugins" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$work/toolchain.cmake" -DPKG_CONFIG_ARGN=--define-prefix \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH="$(stage_prefix qt)/host" -DCODECS="$codecs" &&
  cmake --build "$work/plugins" ${1:+--target "$@"} && cmake --install "$work/plugins" --strip
}

formats_plugins() {
  plugins_build formats && cp -r "$(stage_prefix codecs)/licenses" "$prefix/"
}

# A plugin that needs a DLL which is not deployed would be dropped by Qt without a word.
formats_check() {
  local plugin needed
  for plugin in heif jxl psd tiff webp; do
    needed=$(x86_64-w64-mingw32-objdump -p "$prefix/plugins/imageformats/q$plugin.dll") || return 1
    needed=$(sed -n 's/.*DLL Name: //p' <<<"$needed")
    if grep -vxiE 'Qt6(Core|Gui)\.dll|lib(stdc\+\+-6|gcc_s_seh-1|winpthread-1|ssp-0)\.dll|(kernel32|user32|msvcrt|advapi32)\.dll' <<<"$needed"; then
      echo "$plugin needs these libraries, which are not deployed"
      return 1
    fi
  done
}

formats_stage() {
  provide codecs
  step "formats: plugins (1 minute)" formats_plugins
  step "formats: check" formats_check
}
