#!/usr/bin/env bash
# A shoot of eight 12 MP photos rendered three ways, in turns, in one run:
# one batch process taking two photos at a time, one batch process taking
# one at a time (the engine's own use of both cores only), and eight
# `render` processes one after another (each reading the landmark model).
# Prints each way's median photos per minute over the turns, the ratios
# and the peak memory (largest resident size of any one process), with the
# machine's load. Run by hand: bench/batch_vs_processes.sh [build] [turns]
# [settings.json] (default: docs/example-settings.json, seven effects on).
set -euo pipefail
build=${1:-build}
turns=${2:-3}
settings=${3:-$(dirname "$0")/../docs/example-settings.json}
cli=$build/bin/bellavenor-cli
portrait=$(dirname "$0")/../tests/data/portrait.png
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The portrait's head (no mission patch, which the detector takes for a
# second face once enlarged) at 4000 × 3000, eight variants as JPEG.
mkdir "$work/shoot"
for i in 0 1 2 3 4 5 6 7; do
  convert "$portrait" -crop 400x300+56+0 +repage -resize '4000x3000!' -modulate $((96 + i)) \
    $([ $((i % 2)) -eq 1 ] && echo -flop) -quality 92 "$work/shoot/photo-$i.jpg"
done

# seconds and peak KB of one command, appended to $1
timed() {
  local into=$1; shift
  /usr/bin/time -f '%e %M' -o "$work/time" "$@" >/dev/null 2>&1 || true
  cat "$work/time" >>"$into"
}
batch() { rm -rf "$work/out"; timed "$work/$1" "$cli" render "$work/shoot" --settings "$settings" -o "$work/out/" "${@:2}"; }
processes() {
  rm -rf "$work/out" && mkdir "$work/out"
  local total=0 peak=0
  for f in "$work"/shoot/*.jpg; do
    /usr/bin/time -f '%e %M' -o "$work/time" "$cli" render "$f" --settings "$settings" \
      -o "$work/out/$(basename "${f%.jpg}").png" >/dev/null 2>&1
    read -r s kb <"$work/time"
    total=$(echo "$total + $s" | bc) && ((kb > peak)) && peak=$kb
  done
  echo "$total $peak" >>"$work/processes"
}

load_before=$(cut -d' ' -f1-3 /proc/loadavg)
for ((turn = 1; turn <= turns; turn++)); do
  batch two-at-a-time
  batch one-at-a-time --one-at-a-time
  processes
done

median() { sort -n | awk '{a[NR] = $1} END {print (NR % 2) ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2}'; }
per_minute() { echo "scale=2; 8 * 60 / $1" | bc; }
for way in two-at-a-time one-at-a-time processes; do
  seconds=$(cut -d' ' -f1 "$work/$way" | median)
  peak=$(cut -d' ' -f2 "$work/$way" | sort -n | tail -1)
  printf '%-14s median %6.2f s  %6s photos/min  peak %5d MB\n' "$way" "$seconds" "$(per_minute "$seconds")" $((peak / 1024))
  declare "s_${way//-/_}=$seconds"
done
echo "batch / processes:            $(echo "scale=2; $s_processes / $s_two_at_a_time" | bc) × the photos per minute"
echo "two at a time / one at a time: $(echo "scale=2; $s_one_at_a_time / $s_two_at_a_time" | bc) ×"
echo "load before: $load_before, after: $(cut -d' ' -f1-3 /proc/loadavg); $turns turns; both sides include decoding, the model read (once, or once per process) and encoding"
