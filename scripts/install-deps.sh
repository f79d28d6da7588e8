#!/usr/bin/env bash
# Installs every Debian package the project builds and tests with. Idempotent:
# apt-get update runs only when something is missing.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build ccache pkg-config git make
  qt6-base-dev libqt6opengl6-dev libgl1-mesa-dev libgl1-mesa-dri
  libembree-dev libtbb-dev libassimp-dev libtinyobjloader-dev libpugixml-dev
  libgdal-dev gdal-bin libproj-dev proj-data proj-bin
  libcurl4-openssl-dev libcpp-httplib-dev
  libzip-dev zipcmp zipmerge ziptool zlib1g-dev unzip
  libturbojpeg0-dev libjpeg62-turbo-dev
  libexiv2-dev libsimpleini-dev libimage-exiftool-perl ffmpeg
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth fonts-dejavu-core fonts-liberation2
  chromium
  clang libclang-rt-14-dev libfuzzer-14-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
echo "installing: ${missing[*]}" >&2
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
