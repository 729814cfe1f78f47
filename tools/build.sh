# Configuring and building, for the scripts in tools/. Sourced after lib.sh.

export LARKSPUR_QT_PREFIX
LARKSPUR_QT_PREFIX=$("$root/tools/toolchain" --prefix)

native_packages=(git python3 librsvg2-bin icoutils libwine g++ clang libclang-rt-dev clang-format cmake ninja-build ccache qt6-base-dev
  qt6-base-dev-tools libgl-dev libgif-dev libqrcodegencpp-dev libzbar-dev zxing-cpp-tools
  poppler-utils)

# configure PRESET [-D...]
configure() {
  local preset=$1
  shift
  (cd "$root" && cmake --preset "$preset" "$@")
}

# build_windows [TARGET]
build_windows() {
  "$root/tools/toolchain"
  need ccache
  step "configuring the Windows build" configure windows-cross -DLARKSPUR_FORMATS="$("$root/tools/toolchain" --formats)"
  step "building the Windows executables" cmake --build "$root/build/windows" ${1:+--target "$1"}
}

# Into an empty folder: nothing loads what an earlier build left.
deploy_windows() {
  rm -rf "$root/build/windows/dist"
  step "deploying to build/windows/dist" cmake --install "$root/build/windows" --prefix "$root/build/windows/dist" --strip
}
