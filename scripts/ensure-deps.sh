#!/usr/bin/env bash
# Installs the Debian packages QorDesign needs to build, test and run its demo.
# Installs only what is missing, so a second run does nothing and asks no registry.
set -euo pipefail

# fonts-wqy-microhei: a CJK font, so the demo's Chinese labels show as text, not boxes.
PKGS=(fpc lcl-2.2 lcl-gtk2-2.2 lcl-utils-2.2 lazarus-src-2.2 xvfb xauth xdotool fonts-wqy-microhei)

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
