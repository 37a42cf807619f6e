#!/usr/bin/env bash
# Installs the Debian packages that zr_board builds and tests with.
# Idempotent: does nothing when every package is there already.
set -euo pipefail
pkgs=(cmake g++ make pkg-config
      libboost-dev libboost-filesystem-dev libboost-regex-dev libboost-iostreams-dev
      libxerces-c-dev libxml2-dev tcl8.6-dev tcl8.6 python3-dev zlib1g-dev
      libgtest-dev libgmock-dev libbenchmark-dev python3 chromium)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
