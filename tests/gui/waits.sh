# Sourced inside the virtual display by the window scripts: every step waits
# for what it needs to see (a window, a changed or settled screen, a file),
# polling with a generous deadline, never for a fixed time. The deadline is
# one for all waits, long enough for a machine whose cores are both busy
# compiling (a step seen taking 49 s there took 8 s on a quiet one).
patience=${BELLAVENOR_GUI_PATIENCE:-240}

fail() { echo "FAILED: $*"; import -window root "${shots:-/tmp}/failure.png" 2>/dev/null; exit 1; }

# A pipe nobody writes to: reading it with a time-out paces the polls of
# wait_until without sleeping on a condition that may already hold.
pace=$(mktemp -u) && mkfifo "$pace" && exec {pace_fd}<>"$pace" && rm -f "$pace"

# Runs the command until it succeeds, for at most $2 seconds (default: the
# patience), looking again every tenth of a second.
wait_until() {
  local deadline=$((SECONDS + ${2:-$patience}))
  until eval "$1"; do
    ((SECONDS < deadline)) || return 1
    read -r -t 0.1 -u "$pace_fd" _ || true
  done
}

# The id of the first visible window whose name matches, once there is one.
visible() { timeout "$patience" xdotool search --sync --onlyvisible --name "$1" | head -n 1; }
gone() { wait_until "! xdotool search --onlyvisible --name '$1' >/dev/null 2>&1"; }

# openbox has taken over the screen.
start_window_manager() {
  openbox >/dev/null 2>&1 &
  wait_until 'xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q "window id"' || fail "no window manager"
}

# The right-hand strip of a window, where its panels dock: WxH+X+Y.
dock_strip() {
  eval "$(xdotool getwindowgeometry --shell "$1")"
  echo "300x$((HEIGHT - 200))+$((X + WIDTH - 300))+$((Y + 150))"
}

# Clicks (window, x, y) until the window's dock strip changes: a row opens
# its panel beside the preview only once the photo is analysed and the
# table filled. A click on a row whose panel is open already only brings it
# to the front, so clicking again while a slow window docks is harmless.
click_until_docked() {
  local deadline=$((SECONDS + patience)) strip before after
  strip=$(dock_strip "$1") before=$(mktemp --suffix=.png) after=$(mktemp --suffix=.png)
  import -window root -crop "$strip" +repage "$before"
  while ((SECONDS < deadline)); do
    xdotool mousemove --window "$1" "$2" "$3" click 1
    if wait_until "import -window root -crop '$strip' +repage '$after'; [ \"\$(differing '$before' '$after')\" -gt 0 ]" 5; then
      rm -f "$before" "$after"
      return 0
    fi
  done
  rm -f "$before" "$after"
  return 1
}

differing() { compare -metric AE "$1" "$2" null: 2>&1 || true; }

# Captures with the command $1 into $2 until the captures have stayed the
# same for $3 seconds (default 2): the screen has settled. Two equal
# captures in a row are not enough on a busy machine, where the program may
# pause between two of the keys it was sent. A text field's blinking caret
# (a few dozen pixels) does not count as a change.
settled() {
  local capture=$1 file=$2 previous="$2.previous.png" quiet=${3:-2} since=$SECONDS
  $capture "$previous"
  wait_until "$capture '$file'; if [ \"\$(differing '$previous' '$file')\" -le 64 ]; then ((SECONDS - since >= quiet)); else cp '$file' '$previous'; since=\$SECONDS; false; fi"
  local settled=$?
  rm -f "$previous"
  return $settled
}

# Captures with $1 into $3 until it differs from the picture $2.
changes_from() { wait_until "$1 '$3'; [ \"\$(differing '$2' '$3')\" -gt 0 ]"; }

# Captures with $1 into $3 until it equals the picture $2.
becomes() { wait_until "$1 '$3'; [ \"\$(differing '$2' '$3')\" -eq 0 ]"; }

screen() { import -window root "$1"; }

# A photo chosen through the window's open dialog (Ctrl+O): its path typed.
open_through_dialog() {
  xdotool windowfocus --sync "$1" key ctrl+o
  local opener
  opener=$(visible '^Open') || fail "no open dialog"
  xdotool windowfocus --sync "$opener"
  xdotool type --delay 10 "$2"
  xdotool key Return
  gone '^Open' || fail "the open dialog stayed"
}
