#!/usr/bin/env bash
# Installs the Debian packages the program needs to build, test and run.
#
# Nothing is done when every package is already installed. Otherwise the
# package lists are refreshed once and the missing packages installed. Runs
# apt-get through sudo when not root.
set -euo pipefail

export DEBIAN_FRONTEND=noninteractive

packages=(
    # compiler, build system
    build-essential cmake ninja-build
    # Qt Widgets, PrintSupport and Sql with the SQLite, PostgreSQL and ODBC drivers
    qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql libqt6sql6-odbc unixodbc-dev
    # the desktop engine's library and the server's client library, on which
    # the data layer reads rows directly
    libsqlite3-dev libpq-dev
    # an ODBC driver for the tests of the ODBC engine (registers "SQLite3")
    libsqliteodbc
    # PIN cipher
    libsodium-dev
    # tests and benchmarks (the benchmarks run the raw engines through libsqlite3
    # and libpq; a test reads the picture and the history of a run with python3)
    libgtest-dev libgmock-dev libbenchmark-dev python3
    # the throwaway database server of the tests
    postgresql
    # screens without a display, and Japanese text on them
    xvfb xauth fonts-noto-cjk
    # the tests read the staff cards' PDF files: text, pages, pictures
    poppler-utils
    # fuzz targets
    clang libclang-rt-14-dev
    # the Debian package: cpack takes the libraries' dependencies from dpkg-shlibdeps;
    # the tests check the menu entry with desktop-file-validate
    dpkg-dev desktop-file-utils
    # staff-setup opens the postal service's zipped postcode file with unzip
    unzip
)

# npm fetches the postcode data at set-up. It is asked for only when the
# command is missing: a node installation from elsewhere brings its own npm,
# and the Debian package would conflict with it.
if ! command -v npm >/dev/null 2>&1; then
    packages+=(npm)
fi

missing=()
for p in "${packages[@]}"; do
    status="$(dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null || true)"
    if [ "$status" != "installed" ]; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all packages are installed"
    exit 0
fi

if [ "$(id -u)" -eq 0 ]; then
    as_root=()
elif command -v sudo >/dev/null 2>&1; then
    as_root=(sudo env DEBIAN_FRONTEND=noninteractive)
else
    echo "install-deps: these packages are missing: ${missing[*]}" >&2
    echo "install-deps: installing them needs root, and sudo is not available" >&2
    exit 1
fi

echo "install-deps: installing ${missing[*]}"
"${as_root[@]}" apt-get update
"${as_root[@]}" apt-get install -y "${missing[@]}"
