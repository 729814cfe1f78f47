# Stage "formats": the image format plugins that Qt itself does not bring: AVIF, HEIC, HEIF, JPEG XL, PSD, TIFF and
# WebP, each one DLL with its codecs inside. Sourced by tools/toolchain with $prefix (where it is installed) and $work
# (a scratch folder) set; stage "qt" is complete, and stage "codecs" is built when it is not there.
# Result: plugins/imageformats/*.dll and licenses/, both to be deployed.

formats_plugins() {
  local codecs
  codecs=$(stage_prefix codecs)
  PKG_CONFIG_LIBDIR=$codecs/lib/pkgconfig cmake -S "$root/cmake/toolchain/formats" -B "$work/plugins" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$codecs/toolchain.cmake" \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH="$(stage_prefix qt)/host" -DCODECS="$codecs" &&
  cmake --build "$work/plugins" && cmake --install "$work/plugins" --strip &&
  cp -r "$codecs/licenses" "$prefix/"
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
