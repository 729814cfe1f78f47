# Fetching Debian source packages of another suite than the machine's own, under a private apt configuration:
# apt checks the signatures, and the machine's own package lists stay as they are. The mirror is the one that
# the machine already uses, in any form that apt takes ("mirror+file:" among them). Sourced by the stages.

mirror() {
  apt-get indextargets --format '$(ORIGIN) $(CODENAME) $(REPO_URI)' |
    awk '$1 == "Debian" && $2 !~ /-/ && !seen++ { print $3 }'
}

# private_apt FOLDER SUITE...: the configuration and the package lists of those suites.
private_apt() {
  local folder=$1 suite address
  shift
  address=$(mirror)
  [ -n "$address" ] || { as_root apt-get update && address=$(mirror); }
  [ -n "$address" ] || { echo "none of the machine's apt sources is Debian's"; return 1; }
  mkdir -p "$folder/lists/partial" "$folder/cache/archives/partial"
  : >"$folder/sources.list"
  for suite in "$@"; do
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $address $suite main" >>"$folder/sources.list"
    echo "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $address $suite main" >>"$folder/sources.list"
  done
  cat >"$folder/apt.conf" <<CONF
Dir::Etc::sourcelist "$folder/sources.list";
Dir::Etc::sourceparts "-";
Dir::State::lists "$folder/lists";
Dir::Cache "$folder/cache";
APT::Sandbox::User "root";
CONF
  APT_CONFIG="$folder/apt.conf" apt-get update
}

# source_package FOLDER NAME SUITE VERSION-PREFIX: unpacks the patched source into FOLDER/NAME.
source_package() {
  local folder=$1 name=$2 suite=$3 wanted=$4 found
  found=$(APT_CONFIG="$folder/apt.conf" apt-get source --print-uris -t "$suite" "$name" 2>/dev/null |
    sed -n "s/.*[ /]${name}_\([^ ]*\)\.dsc .*/\1/p" | head -n 1)
  case "$found" in
    "$wanted"*) ;;
    *) echo "$name of $suite is '$found', this recipe was tried with $wanted"; return 1 ;;
  esac
  (cd "$folder" && APT_CONFIG="$folder/apt.conf" apt-get source -t "$suite" "$name")
  rm -rf "${folder:?}/$name"
  mv "$(find "$folder" -mindepth 1 -maxdepth 1 -type d -name "$name-*" | head -n 1)" "$folder/$name"
}
