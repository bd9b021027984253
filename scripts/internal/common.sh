# What the scripts share. To be sourced by bash, with the repository's root as working directory afterwards. With --help a
# script prints the comment at its head, and does nothing else.

set -euo pipefail

# show_help: prints that comment.
show_help() {
  sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"
}

if [ "${1:-}" = --help ]; then
  show_help
  exit
fi
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

# The Boost that the project is built with. The default of Debian 12, 1.74, can not copy a file to another file system;
# 1.81 is beside it there, and later systems have a later one.
boost_version=
if grep -qs '^VERSION_CODENAME=bookworm' /etc/os-release; then
  boost_version=1.81
fi

build_packages=(g++ cmake ninja-build ccache "libboost$boost_version-dev" "libboost-filesystem$boost_version-dev" libbz2-dev
  libxerces-c-dev)
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev libxml2-utils locales bzip2 python3 gdb pkgconf
  libopenmpi-dev openmpi-bin)
bench_packages=("${test_packages[@]}" libbenchmark-dev "libboost-date-time$boost_version-dev"
  "libboost-serialization$boost_version-dev" libabsl-dev libhowardhinnant-date-dev libfmt-dev libspdlog-dev libcereal-dev
  libpoco-dev libssl-dev heaptrack numdiff)

# step <text>: says what happens now.
step() {
  printf '\n== %s\n' "$*"
}

# as_root <command>...: runs a command as root, by sudo where that is needed.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "Only root may do that, and there is no sudo here. Call as root, or install sudo." >&2
    exit 1
  fi
}

# install_packages <package or file>...: installs with all that is needed for it.
install_packages() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >/dev/null
}

# need <package>...: installs what is missing, on Debian and its kin. Elsewhere it names the packages and stops.
need() {
  local missing=() package
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    if [ -n "${ORV_SKIP_INSTALL:-}" ]; then
      return
    fi
    printf 'This system has no apt-get. Install what these Debian packages hold, set ORV_SKIP_INSTALL=1 and call again:\n'
    printf '  %s\n' "$@"
    exit 1
  fi
  for package in "$@"; do
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)" != installed ]; then
      missing+=("$package")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return
  fi

  step "Installing ${missing[*]}"
  as_root apt-get update -qq
  install_packages "${missing[@]}"
}

# configure_and_build <preset> <target>...: makes the targets of a preset.
configure_and_build() {
  local preset=$1
  shift
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    # A clone in another folder finds what this one has compiled.
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
  fi
  step "Configuring build/$preset"
  cmake --preset "$preset" --log-level=WARNING >/dev/null
  step "Building build/$preset"
  cmake --build --preset "$preset" --target "$@"
}
