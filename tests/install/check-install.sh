#!/usr/bin/env bash
# Installs the build tree into a fresh prefix, builds the example consumer
# against it with CMake and with pkg-config, and runs both on a project that
# the installed tachyrun-project makes (reading its template from
# share/tachyrun and writing its own folders under $XDG_DATA_HOME).
#   check-install.sh BUILD_DIR SOURCE_DIR CMAKE_GENERATOR CXX_COMPILER
set -euo pipefail
build=$1 source=$2 generator=$3 cxx=$4
work=$(mktemp -d "${TMPDIR:-/tmp}/tachyrun-install-XXXXXX")
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
fail() { echo "check-install: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; fail "install failed"; }

# What the prefix must hold.
for path in include/tachyrun/core/DataLock.h include/tachyrun/project/Project.h \
            include/tachyrun/engine/Pixmill.h lib/libtachyrun_project.a lib/libpixmill.so \
            lib/cmake/Tachyrun/TachyrunConfig.cmake lib/pkgconfig/tachyrun.pc \
            bin/tachyrun-project share/tachyrun/Default.qzpj share/tachyrun/Timeline1.Qzt \
            share/tachyrun/Repository1.Qzr; do
  [ -e "$prefix/$path" ] || fail "missing $path"
done
[ ! -e "$prefix/bin/Default.qzpj" ] || fail "the template belongs in share/tachyrun, not bin"

# The installed program: template from share/, its folders under XDG_DATA_HOME.
mkdir -p "$work/projects" "$work/xdg"
project=$(XDG_DATA_HOME="$work/xdg" HOME="$work/home" "$prefix/bin/tachyrun-project" new "$work/projects" Demo)
[ "$project" = "$work/projects/Demo/Demo.qzpj" ] || fail "new printed '$project'"
[ -d "$work/xdg/tachyrun/Tmp" ] || fail "no Tmp under XDG_DATA_HOME"
[ ! -e "$prefix/bin/Tmp" ] && [ ! -e "$prefix/share/tachyrun/Tmp" ] || fail "wrote into the prefix"
[ ! -e "$work/home" ] || fail "used HOME although XDG_DATA_HOME was set"

expected="Demo: 1 timelines
Timeline1: 5 tracks, 0 components
pixmill: ready"

# 1. find_package(Tachyrun CONFIG).
cmake -S "$source/examples/list-timelines" -B "$work/cmake-build" -G "$generator" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" >"$work/cmake.log" ||
  { cat "$work/cmake.log"; fail "the CMake example does not configure"; }
cmake --build "$work/cmake-build" >"$work/cmake-build.log" ||
  { cat "$work/cmake-build.log"; fail "the CMake example does not build"; }
out=$(XDG_DATA_HOME="$work/xdg" "$work/cmake-build/list-timelines" "$project")
[ "$out" = "$expected" ] || fail "CMake example printed: $out"

# 2. pkg-config.
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
flags=$(pkg-config --cflags --libs tachyrun) || fail "pkg-config does not know tachyrun"
# shellcheck disable=SC2086
"$cxx" "$source/examples/list-timelines/main.cpp" $flags -o "$work/list-pc" ||
  fail "the pkg-config example does not build"
out=$(LD_LIBRARY_PATH="$prefix/lib" XDG_DATA_HOME="$work/xdg" "$work/list-pc" "$project")
[ "$out" = "$expected" ] || fail "pkg-config example printed: $out"
echo "check-install: prefix, installed program and both example builds are fine"
