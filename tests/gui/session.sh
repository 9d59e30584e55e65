# Sourced by the window scripts: a throw-away home, runtime folder and
# screenshot folder ($shots, or a temporary one), and the real X platform.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
[ -n "${shots:-}" ] || shots=$work/shots
mkdir -p "$shots"
export HOME=$work XDG_CONFIG_HOME=$work/.config XDG_RUNTIME_DIR=$work/run
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
unset QT_QPA_PLATFORM
