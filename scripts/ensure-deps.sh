#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Debian packages QorDesign needs to build, test and run its demo.
# Installs only what is missing, so a second run does nothing and asks no registry.
#   --fuzz   also clang and its libFuzzer runtime, for `make fuzz`
set -euo pipefail

# libqt6sql6-sqlite: only recommended by Qt SQL, so named here; libsqlite3-dev:
# the translation manager steps its look-ups on the connection's handle.
# qt6-tools-dev: Qt Designer's plugin interfaces, QFormBuilder and QUiLoader;
# its CMake package needs libqt6opengl6-dev, which it does not pull in.
# designer-qt6: the clipboard test exchanges components with a running Qt
# Designer. libxtst-dev: real X input for the GUI tests; xvfb and xauth: xvfb-run.
# qt6-l10n-tools: lupdate and lrelease, which make the library's translations.
# tango-icon-theme: the demo's tool bar icons (public domain).
PKGS=(build-essential cmake ninja-build qt6-base-dev libqt6sql6-sqlite libsqlite3-dev qt6-tools-dev libqt6opengl6-dev
      qt6-l10n-tools designer-qt6 libgl-dev libxtst-dev xvfb xauth tango-icon-theme)
# clang builds the fuzz targets; libclang-rt-dev holds libFuzzer and
# clang's sanitizer runtimes, which the clang package does not pull in.
if [ "${1:-}" = "--fuzz" ]; then
  PKGS+=(clang libclang-rt-dev)
fi

missing=()
for p in "${PKGS[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "ensure-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
