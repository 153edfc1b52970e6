# shellcheck shell=sh
# Sourced by ./run, ./test and .ci/run from the root of the tree: installs what is missing, and
# says nothing where nothing is.

set -eu

# kiva_install_packages [--with-tools]: those of the list; its last section only if asked for.
kiva_install_packages() {
  missing=
  last='/^# Tools that/q'
  [ "${1:-}" != --with-tools ] || last=
  # shellcheck disable=SC2013  # words are what is wanted
  for package in $(sed -n -e "$last" -e 's/#.*//' -e p scripts/packages); do
    dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q 'install ok installed' ||
      missing="$missing $package"
  done
  [ -n "$missing" ] || return 0
  echo "Installing$missing" >&2
  as_root=
  [ "$(id -u)" = 0 ] || as_root=sudo
  $as_root apt-get update -q >&2
  # shellcheck disable=SC2086  # a list of words
  $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends $missing >&2
}

# kiva_build PRESET [TARGET...]: configures once, then builds; quiet unless it fails, but for the progress
# on a terminal.
kiva_build() {
  preset=$1
  shift
  log=build/$preset.log
  mkdir -p build
  targets=
  [ $# = 0 ] || targets="--target $*"
  : >"$log"
  # shellcheck disable=SC2086
  if ! { { cmake --preset "$preset" && cmake --build "build/$preset" -j "$(nproc)" $targets; } \
    2>&1 && echo "kiva built"; } | kiva_progress "$log"; then
    cat "$log" >&2
    echo "The build failed; its output is in $log" >&2
    exit 1
  fi
}

# Writes its input to the log, and on a terminal the steps done; fails unless the last line says that
# all is built.
kiva_progress() {
  terminal=false
  [ ! -t 2 ] || terminal=true
  last=
  while IFS= read -r line; do
    last=$line
    printf '%s\n' "$line" >>"$1"
    case $terminal,$line in
    true,'['*/*']'*) printf '\r\033[KBuilding %s' "${line%%]*}]" >&2 ;;
    esac
  done
  ! $terminal || printf '\r\033[K' >&2
  [ "$last" = "kiva built" ]
}
