#!/usr/bin/env bash
# Installs what building and testing need, by the names of Debian's packages; with build, the libraries of npm too.
# usage: tools/install_packages.sh GROUP...      groups: build windows window tests bench
# Does nothing where all is there already.
set -euo pipefail

build=(g++ cmake ninja-build ccache libboost1.81-dev libcli11-dev nlohmann-json3-dev)
windows=(g++-mingw-w64-x86-64-posix wine wine64)
window=(xvfb openbox xauth x11-utils xdotool wmctrl imagemagick fonts-noto-core fonts-noto-cjk fonts-liberation
  fonts-dejavu-core)
tests=(googletest libgtest-dev libgmock-dev clang lld llvm libclang-rt-14-dev procps python3 ntfs-3g xz-utils)
bench=(libbenchmark-dev plocate fd-find ripgrep python3 ntfs-3g sleuthkit)

command -v npm >/dev/null || build+=(npm)

wanted=()
for group in "$@"; do
  case $group in
    build) wanted+=("${build[@]}") ;;
    windows) wanted+=("${windows[@]}") ;;
    window) wanted+=("${window[@]}") ;;
    tests) wanted+=("${tests[@]}") ;;
    bench) wanted+=("${bench[@]}") ;;
    *) echo "install_packages.sh: unknown group '$group'" >&2; exit 2 ;;
  esac
done

missing=()
for package in "${wanted[@]}"; do
  state=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [ "$state" = "install ok installed" ] || missing+=("$package")
done
libraries=()
[[ " $* " != *" build "* ]] || libraries=("$(dirname "$0")/install_libraries.sh")
[ ${#missing[@]} -eq 0 ] && exec "${libraries[@]:-true}"

as_root=()
if [ "$(id -u)" != 0 ]; then
  command -v sudo >/dev/null || { echo "install as root: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
exec "${libraries[@]:-true}"
