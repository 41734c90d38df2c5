#!/bin/sh
# Runs a test program on a desktop of its own: a private session bus and a
# virtual X display of the given size.
#   run-on-desktop.sh BUS_CONFIG WIDTHxHEIGHT PROGRAM [ARGS...]
# Exits 77 (skipped) when dbus-run-session or Xvfb is not installed. Xvfb
# picks a free display number itself (-displayfd), so that parallel tests
# with displays of their own never race for one.
set -eu
config=$1
size=$2
shift 2
for tool in dbus-run-session Xvfb; do
  if ! command -v "$tool" >/dev/null 2>&1; then
    echo "$tool is not installed: skipped" >&2
    exit 77
  fi
done

if [ -z "${TACHYRUN_ON_PRIVATE_BUS:-}" ]; then
  export TACHYRUN_ON_PRIVATE_BUS=1
  exec dbus-run-session --config-file="$config" -- sh "$0" "$config" "$size" "$@"
fi

work=$(mktemp -d)
xvfb=
cleanup() {
  [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null && wait "$xvfb" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 143' INT TERM
mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
xvfb=$!
number=
read -r number <"$work/display" || true
if [ -z "$number" ]; then
  echo "Xvfb did not start:" >&2
  cat "$work/xvfb.log" >&2
  exit 1
fi
set +e
DISPLAY=":$number" "$@"
status=$?
set -e
exit $status
