# Wine prefixes and the virtual display, for the scripts in tools/. Sourced after lib.sh.
#
# A prefix made here is cut off from the build machine: Wine would link Documents, Desktop and the like to the home
# folder and drive Z: to the root, and it removes the target of a symbolic link instead of the link. Only the
# folders that a caller names are reachable, under drive letters of their own.

wine_packages=(wine wine64 xvfb openbox xdotool x11-utils imagemagick fonts-open-sans fonts-droid-fallback)
prefixes=() displays=() # that stop_display ends
export WINEDEBUG=${WINEDEBUG:--all} WINEARCH=win64 WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

# A LOGFONTW as the registry keeps it: Segoe UI, 9 points at 96 DPI.
interface_font() {
  printf 'hex:f4,ff,ff,ff,00,00,00,00,00,00,00,00,00,00,00,00,90,01,00,00,00,00,00,00,00,00,00,00'
  printf 'Segoe UI' | od -An -v -tx1 | tr -s ' \n' '\n\n' | sed '/^$/d' | while read -r byte; do printf ',%s,00' "$byte"; done
  for _ in $(seq 24); do printf ',00,00'; done
}

prefix_registry() {
  local font replacement
  font=$(interface_font)
  cat <<REG
REGEDIT4

[HKEY_CURRENT_USER\\Software\\Fernlight Larkspur Tests]
"Prefix"=dword:00000001

[HKEY_CURRENT_USER\\Software\\Wine\\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\\Environment]
"QT_PLUGIN_PATH"="D:\\\\dist"
"QT_FORCE_STDERR_LOGGING"="1"

[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Fonts]
"Open Sans Regular (TrueType)"="OpenSans-Regular.ttf"
"Open Sans Bold (TrueType)"="OpenSans-Bold.ttf"
"Open Sans Italic (TrueType)"="OpenSans-Italic.ttf"
"Open Sans Bold Italic (TrueType)"="OpenSans-BoldItalic.ttf"
"Open Sans Semibold (TrueType)"="OpenSans-Semibold.ttf"
"Droid Sans Fallback (TrueType)"="DroidSansFallbackFull.ttf"

[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]
REG
  for replacement in "Segoe UI" "Segoe UI Semibold" "Tahoma" "MS Shell Dlg" "MS Shell Dlg 2" "Arial"; do
    printf '"%s"="Open Sans"\n' "$replacement"
  done
  cat <<REG

[HKEY_CURRENT_USER\\Control Panel\\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000002
"FontSmoothingGamma"=dword:00000578
"FontSmoothingOrientation"=dword:00000001

[HKEY_CURRENT_USER\\Control Panel\\Desktop\\WindowMetrics]
"MessageFont"=$font
"CaptionFont"=$font
"MenuFont"=$font
"StatusFont"=$font
"SmCaptionFont"=$font
"IconFont"=$font
REG
}

# Only the fonts in the prefix exist for Wine (fontconfig gives it none): the condensed faces of the same family, which the machine
# also has, would otherwise be taken for the regular one.
prefix_fonts() {
  local fonts="$WINEPREFIX/drive_c/windows/Fonts" open=/usr/share/fonts/truetype/open-sans/OpenSans
  mkdir -p "$fonts"
  cp "$open"-{Regular,Bold,Italic,BoldItalic,Semibold}.ttf /usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf "$fonts"
  cat >"$WINEPREFIX/fonts.conf" <<CONF
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig></fontconfig>
CONF
}

build_prefix() {
  local link
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  prefix_fonts
  wineboot -i && wineserver -w &&
  wine winecfg -v win10 &&
  prefix_registry >"$WINEPREFIX/drive_c/larkspur.reg" &&
  wine regedit 'C:\larkspur.reg' && wineserver -w || return 1
  find "$WINEPREFIX/drive_c/users" -type l | while read -r link; do
    rm "$link" && mkdir "$link" || return 1
  done &&
  rm -f "$WINEPREFIX"/dosdevices/z: "$WINEPREFIX"/dosdevices/z:: &&
  [ -z "$(find "$WINEPREFIX/drive_c/users" -type l)" ] &&
  touch "$WINEPREFIX/complete"
}

# use_prefix NAME DRIVE=FOLDER...: makes the prefix if need be, and gives it exactly those drives besides C:.
use_prefix() {
  local drive recipe
  recipe=$(sha256sum "$root/tools/wine.sh" | cut -c1-12)
  # One for each checkout: the drives lead into its build folder, and tests of two checkouts may run at once.
  export WINEPREFIX="$cache/wine/$1-$recipe-$checkout" FONTCONFIG_FILE="$cache/wine/$1-$recipe-$checkout/fonts.conf"
  shift
  prefixes+=("$WINEPREFIX")
  [ -e "$WINEPREFIX/complete" ] || step "Wine prefix $(basename "$WINEPREFIX")" build_prefix
  find "$WINEPREFIX/dosdevices" -type l ! -name 'c:' -delete
  for drive in "$@"; do
    ln -s "${drive#*=}" "$WINEPREFIX/dosdevices/${drive%%=*}:"
  done
}

# start_display SIZE: a virtual display that ends with the script, with a window manager: without one no window has
# the keyboard. The first Wine process of a prefix starts the
# desktop that every later window hangs on, so DISPLAY must be set before it.
start_display() {
  local number_file
  number_file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${1:-1600x1000}x24" -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
  displays+=($!)
  trap stop_display EXIT
  for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    sleep 0.1
  done
  [ -s "$number_file" ] || die "the virtual display did not start"
  export DISPLAY=":$(tr -d '\n' <"$number_file")"
  rm -f "$number_file"
  manage_windows
}

manage_windows() {
  local settings="$cache/wine/openbox.xml"
  mkdir -p "$cache/wine"
  sed 's,<name>Clearlooks</name>,<name>Breeze-ob</name>,; s,<name>sans</name>,<name>Open Sans</name>,; s,<size>8</size>,<size>9</size>,' \
    /etc/xdg/openbox/rc.xml >"$settings"
  env -u FONTCONFIG_FILE openbox --sm-disable --config-file "$settings" >/dev/null 2>&1 &
  xsetroot -solid '#3a6ea5' 2>/dev/null || true
}

stop_display() {
  local prefix
  for prefix in "${prefixes[@]}"; do
    WINEPREFIX=$prefix wineserver -k >/dev/null 2>&1 || true
  done
  [ ${#displays[@]} = 0 ] || kill "${displays[@]}" 2>/dev/null || true
}

# start_sessions DRIVE=FOLDER...: one for each processor and one more, since a test waits half of its time, five at most:
# a display and a prefix of its own, with Wine's services running. LARKSPUR_TEST_SESSIONS is the folder of the files that tools/wine-run takes them from.
start_sessions() {
  local number
  LARKSPUR_TEST_SESSIONS=$(mktemp -d)
  sessions=$(($(nproc) + 1))
  [ "$sessions" -le 5 ] || sessions=5
  for number in $(seq "$sessions"); do
    start_display
    use_prefix "test$number" "$@"
    wineserver -k >/dev/null 2>&1 && wineserver -w || true # of a run that was interrupted
    wineserver -p
    # The first process starts Wine's services, which keep its output open: CTest would wait for them until the timeout.
    wine cmd /c exit >/dev/null 2>&1
    printf 'export DISPLAY=%q WINEPREFIX=%q FONTCONFIG_FILE=%q\n' "$DISPLAY" "$WINEPREFIX" "$FONTCONFIG_FILE" \
      >"$LARKSPUR_TEST_SESSIONS/$number"
  done
  export LARKSPUR_TEST_SESSIONS
}
