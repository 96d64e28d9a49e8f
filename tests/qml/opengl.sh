#!/usr/bin/env bash
# opengl.sh RUNNER MODULE FILE...: runs tests of the QML module that draw on an X server of their own, by OpenGL on the
# processor.
set -euo pipefail

export QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1
unset QT_QUICK_BACKEND
# shellcheck disable=SC2016
xvfb-run -a -s "-screen 0 1280x1024x24" bash -ec '
    for file in "${@:3}"; do
        "$1" -import "$2" -input "$file"
    done' opengl "$@"
