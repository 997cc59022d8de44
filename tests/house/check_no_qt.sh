#!/bin/sh
# The logic runs without any Qt library: nothing of Qt may be loaded by its test program.
libraries=$(ldd "$1") || exit 1
if echo "$libraries" | grep -i 'libqt'; then
    echo "$1 loads Qt"
    exit 1
fi
