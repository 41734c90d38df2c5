#!/bin/sh
# Runs a test program on a private session bus and a virtual X display:
#   run-on-desktop.sh BUS_CONFIG WIDTHxHEIGHT PROGRAM [ARGS...]
# Exits 77 (skipped) when a tool for that is not installed.
set -eu
config=$1
size=$2
shift 2
for tool in dbus-run-session xvfb-run; do
  if ! command -v "$tool" >/dev/null 2>&1; then
    echo "$tool is not installed: skipped" >&2
    exit 77
  fi
done
exec dbus-run-session --config-file="$config" -- \
  xvfb-run -a -s "-screen 0 ${size}x24" "$@"
