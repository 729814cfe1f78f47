# Shared by the scripts in tools/: where things are, progress lines, package installation.
# Sourced, never run.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${LARKSPUR_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/fernlight-larkspur}
checkout=$(printf '%s' "$root" | sha256sum | cut -c1-8)
started=$SECONDS

say() { printf '%s\n' "$*"; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# step TITLE COMMAND...: runs the command with its output in a log, prints one line with the elapsed time,
# and shows the end of the log when it fails.
step() {
  local title=$1 log status begin=$SECONDS
  shift
  mkdir -p "$cache/log/$checkout"
  log="$cache/log/$checkout/$(printf '%s' "$title" | tr -c 'A-Za-z0-9' '-' | cut -c1-60).log"
  printf '%-58s ' "$title ..."
  # Not as a condition: "set -e" is off in one, and a function that fails in its middle would count as done.
  set +e
  (set -e; "$@") >"$log" 2>&1
  status=$?
  set -e
  if [ "$status" = 0 ]; then
    printf 'done, %d s (%d s in all)\n' $((SECONDS - begin)) $((SECONDS - started))
  else
    printf 'FAILED after %d s; the end of %s:\n' $((SECONDS - begin)) "$log"
    tail -n 40 "$log"
    exit 1
  fi
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: installs those Debian packages that are missing.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && return 0
  say "packages to install: ${missing[*]}"
  step "package lists" as_root apt-get update
  step "packages" as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}
