#!/usr/bin/env bash
# Installs every Debian 12 package that building, testing, benchmarking and
# fuzzing Tachyrun needs. Idempotent: prints nothing when all is present.
set -euo pipefail

PACKAGES=(
  # toolchain
  g++ cmake ninja-build ccache pkg-config git clang libclang-rt-14-dev
  # test and benchmark frameworks
  libgtest-dev libgmock-dev libbenchmark-dev
  # registry store
  libsqlite3-dev sqlite3
  # picture engine: CPU (libyuv) and GPU (OpenCL, PoCL's CPU device for CI)
  libyuv-dev ocl-icd-opencl-dev opencl-c-headers opencl-clhpp-headers pocl-opencl-icd clinfo
  # comparison in the engine benchmark
  libswscale-dev libavutil-dev
  # test dialog and controls
  qt6-base-dev libgl-dev fonts-dejavu-core xvfb xauth
  # screen saver, screen size and key services; their tests' private bus
  libglib2.0-dev libx11-dev libxtst-dev dbus-daemon
  # media graph helpers
  libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev gstreamer1.0-plugins-base
  gstreamer1.0-tools libgsf-1-dev libgsf-bin
  # wavparse, for graphs over WAV files in the graph tests
  gstreamer1.0-plugins-good
  # parsers that check the headless runner's metrics output in the tests
  prometheus python3-prometheus-client
  # project tool: JSON output, its schema check, and MLT as the peer reading its exports
  nlohmann-json3-dev python3-jsonschema melt
)

missing=()
for pkg in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$pkg")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1; then
    SUDO="sudo"
  else
    echo "setup: need root or sudo to install: ${missing[*]}" >&2
    exit 1
  fi
fi

echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq "${missing[@]}" >/dev/null
echo "setup: done"
