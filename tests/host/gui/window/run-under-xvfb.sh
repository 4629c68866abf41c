#!/bin/sh
# Runs a command on a private Xvfb display and passes its exit code on. When Xvfb cannot
# start, says so and exits 77, which the test driver counts as skipped.
if ! command -v Xvfb >/dev/null 2>&1; then
  echo "SKIPPED: Xvfb is not installed (scripts/install-deps installs it)"
  exit 77
fi
fifo_dir=$(mktemp -d)
mkfifo "$fifo_dir/display"
Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp 3>"$fifo_dir/display" 2>"$fifo_dir/log" &
xvfb=$!
display=$(timeout 10 head -n 1 "$fifo_dir/display")
if [ -z "$display" ]; then
  echo "SKIPPED: Xvfb could not start: $(cat "$fifo_dir/log")"
  kill "$xvfb" 2>/dev/null
  rm -rf "$fifo_dir"
  exit 77
fi
DISPLAY=":$display" "$@"
code=$?
kill "$xvfb" 2>/dev/null
wait "$xvfb" 2>/dev/null
rm -rf "$fifo_dir"
exit $code
