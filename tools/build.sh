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

# install_windows FOLDER: what users get.
install_windows() { cmake --install "$root/build/windows" --prefix "$1" --strip; }

# The same with page-aligned sections: Wine maps such files, but copies others into the memory of each process. Windows
# maps both.
install_for_wine() {
  local file
  install_windows "$1" &&
  for file in "$1"/*.dll "$1"/*.exe; do
    x86_64-w64-mingw32-objcopy --file-alignment 4096 "$file" || return 1
  done
}

# Into an empty folder, so that nothing loads leftovers of an earlier build.
deploy_windows() {
  rm -rf "$root/build/windows/dist"
  step "deploying to build/windows/dist" install_for_wine "$root/build/windows/dist"
}
