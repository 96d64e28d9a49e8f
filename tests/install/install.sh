#!/usr/bin/env bash
# install.sh TEST: one test of the installation. CMakeLists.txt gives BUILD, SOURCE, WORK, CXX, LIBDIR and VERSION.
set -euo pipefail

prefix=$WORK/prefix
work=$WORK/$1
example=$SOURCE/examples/minimal

fail() {
    echo "install.$1" >&2
    exit 1
}

expect_output() { # program
    diff "$example/expected.txt" <("$1")
}

# Installs into another folder and moves it, so that the other tests show that no file holds its path.
tree() {
    rm -rf "$prefix"
    cmake --install "$BUILD" --prefix "$work" >/dev/null
    mv "$work" "$prefix"
    local library=$prefix/$LIBDIR/librfUtils.so
    test "$(readlink "$library")" = "librfUtils.so.${VERSION%%.*}"
    test "$(readlink "$library.${VERSION%%.*}")" = "librfUtils.so.$VERSION"
    readelf -d "$library" | grep -q "SONAME.*\[librfUtils.so.${VERSION%%.*}\]"
    test ! -e "$prefix/include/rfUtils/detail"
    if grep -rIl "$work" "$prefix"; then
        fail "tree: a file holds the path of its installation"
    fi
    if [ -x "$prefix/bin/rfutils-view" ]; then
        test "$(env -u LD_LIBRARY_PATH "$prefix/bin/rfutils-view" --version)" = "rfutils-view $VERSION"
        test -f "$prefix/share/applications/rfutils-view.desktop"
        test -f "$prefix/share/icons/hicolor/scalable/apps/rfutils-view.svg"
    fi
    if [ -x "$prefix/bin/rfutils" ]; then
        test "$(env -u LD_LIBRARY_PATH "$prefix/bin/rfutils" --version)" = "rfutils $VERSION"
    fi
}

# What each component holds of a whole installation.
expected_component() { # path
    case $1 in
        ./$LIBDIR/librfUtils.so.*) echo runtime ;;
        ./include/* | ./$LIBDIR/cmake/* | ./$LIBDIR/pkgconfig/* | ./$LIBDIR/librfUtils.so) echo dev ;;
        ./share/man/man3/*) echo dev ;;
        ./bin/rfutils-view | ./share/applications/* | ./share/icons/* | ./share/metainfo/* | ./share/*/*rfutils-view*) echo viewer ;;
        ./bin/rfutils | ./share/man/* | ./share/bash-completion/* | ./share/zsh/* | ./share/fish/* | ./share/rfutils/*) echo tools ;;
        ./$LIBDIR/qt5/qml/RfUtils/*) echo qml ;;
        ./$LIBDIR/python*/rfutils/*) echo python ;;
        ./share/doc/*) echo doc ;;
        *) echo none ;;
    esac
}

install_components() { # folder component...
    local folder=$1 component
    shift
    for component; do
        cmake --install "$BUILD" --component "$component" --prefix "$PWD/$folder" >/dev/null
    done
}

# Each file of an installation belongs to one component, and each component works with those that it needs.
components() {
    local component
    unset LD_LIBRARY_PATH
    (cd "$prefix" && find . ! -type d) | while read -r file; do
        echo "$(expected_component "$file") $file"
    done | sort >expected.txt
    for component in runtime dev tools qml viewer python doc; do
        install_components "$component" "$component"
        if [ -d "$component" ]; then
            (cd "$component" && find . ! -type d -printf "$component %p\n")
        fi
    done | sort >found.txt
    diff expected.txt found.txt

    install_components library runtime dev
    cmake -S "$example" -B build -DCMAKE_PREFIX_PATH="$PWD/library" -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build build >/dev/null
    expect_output build/levels
    mkdir page
    printf 'cmake_minimum_required(VERSION 3.16)\nproject(page)\nfind_package(rfUtils REQUIRED COMPONENTS Qml)\n' \
        >page/CMakeLists.txt
    if cmake -S page -B page/build -DCMAKE_PREFIX_PATH="$PWD/library" >/dev/null 2>refusal.txt; then
        fail "components: the package found a module that is not installed"
    fi

    if [ -d tools ]; then
        test -f tools/share/man/man1/rfutils-convert.1
        test -f tools/share/man/man5/rfutils-formats.5
        test -f tools/share/bash-completion/completions/rfutils
        test -f tools/share/zsh/site-functions/_rfutils
        test -f tools/share/fish/vendor_completions.d/rfutils.fish
        install_components command runtime tools
        test "$(command/bin/rfutils --version)" = "rfutils $VERSION"
    fi
    if [ -d viewer ]; then
        install_components window runtime qml viewer
        QT_QPA_PLATFORM=minimal:enable_fonts QT_QUICK_BACKEND=software window/bin/rfutils-view "$SOURCE/examples/data/fm_band.csv" \
            --screenshot viewer.png
        test -s viewer.png
    fi

    if [ -d python ]; then
        install_components package runtime python
        (cd "$SOURCE/examples/data" && PYTHONPATH=$(echo "$OLDPWD"/package/"$LIBDIR"/python*/*) PYTHONDONTWRITEBYTECODE=1 \
            "$PYTHON" -c 'import rfutils; print(rfutils.__version__, len(rfutils.Recording("fm_band.csv").peaks()))') >imported.txt
        test "$(cat imported.txt)" = "$VERSION 16"
    fi

    # Examples and documents need no source tree.
    local documents=doc/share/doc/rfUtils
    cmake -S "$documents/examples/parameters" -B parameters -DCMAKE_PREFIX_PATH="$PWD/library" \
        -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build parameters >/dev/null
    diff "$documents/examples/parameters/expected.txt" <(parameters/parameters)
    grep -oE '\]\((docs|examples)[^)#]*' "$documents/README.md" | cut -c 3- | while read -r link; do
        test -e "$documents/$link" || fail "components: README.md leads to $link, which is not installed"
    done
}

# Removes what it installed and no other file, from a build of its own: the manifests of BUILD may be of an installation
# that is in use.
uninstall() {
    cmake -S "$SOURCE" -B build -G Ninja -DRFUTILS_BUILD_TESTS=OFF -DRFUTILS_BUILD_TOOLS=OFF -DRFUTILS_BUILD_QML=OFF \
        -DRFUTILS_BUILD_PYTHON=OFF -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build build >/dev/null

    mkdir -p prefix/include/rfUtils/units
    touch prefix/include/rfUtils/units/own.h
    cmake --install build --prefix "$PWD/prefix" >/dev/null
    test -L "prefix/$LIBDIR/librfUtils.so"
    cmake --build build --target uninstall >/dev/null
    test "$(find prefix ! -type d)" = prefix/include/rfUtils/units/own.h
    test ! -e prefix/share/doc/rfUtils
    test ! -e "prefix/$LIBDIR/cmake/rfUtils"

    # Two components, below DESTDIR.
    for component in runtime doc; do
        DESTDIR=$PWD/stage cmake --install build --component $component --prefix /usr >/dev/null
    done
    test -f stage/usr/share/doc/rfUtils/README.md
    DESTDIR=$PWD/stage cmake --build build --target uninstall >/dev/null
    test -z "$(find stage ! -type d)"

    if cmake --build build --target uninstall >refusal.txt 2>&1; then
        fail "uninstall: nothing was uninstalled without a complaint"
    fi
    grep -q 'nothing to uninstall' refusal.txt
}

# All installed headers together; that each compiles alone is a part of the build.
headers() {
    local flags
    flags="-std=c++17 -fPIC -fsyntax-only $(pkg-config --cflags Qt5Core)"
    (cd "$prefix/include" && find rfUtils -name '*.h' -printf '#include <%p>\n') >all.cpp
    # shellcheck disable=SC2086  # the flags are words
    "$CXX" $flags -I "$prefix/include" all.cpp
    # A macro that changes the layout of a class is refused.
    # shellcheck disable=SC2086
    if "$CXX" $flags -DBOOST_CB_ENABLE_DEBUG=1 -I "$prefix/include" all.cpp 2>refusal.txt; then
        fail "headers: BOOST_CB_ENABLE_DEBUG was accepted"
    fi
    grep -q '#error.*BOOST_CB_ENABLE_DEBUG' refusal.txt
}

find_package() {
    cmake -S "$example" -B build -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
    cmake --build build
    expect_output build/levels

    # A program on the instrument's platform does not get a library with a platform of its own.
    if cmake -S "$example" -B platform -DCMAKE_PREFIX_PATH="$prefix" \
        -DRFUTILS_PLATFORM_TARGET=Instrument::platform >/dev/null 2>refusal.txt; then
        fail "find_package: an embedded platform was accepted beside another"
    fi
    grep -q 'built with RFUTILS_PLATFORM_TARGET=' refusal.txt

    # Nor does a program for the next major version.
    local next=$((${VERSION%%.*} + 1)).0
    mkdir next
    sed "s/find_package(rfUtils/& $next/" "$example/CMakeLists.txt" >next/CMakeLists.txt
    cp "$example/main.cpp" next
    if cmake -S next -B next/build -DCMAKE_PREFIX_PATH="$prefix" >/dev/null 2>refusal.txt; then
        fail "find_package: version $next was found"
    fi
    grep -q "requested version \"$next\"" refusal.txt
}

# What the reader of the tutorial does, from an empty folder.
tutorial() {
    CMAKE_PREFIX_PATH=$prefix python3 "$SOURCE/tests/documents/follow.py" "$SOURCE/docs/tutorial.md" station
}

# A target of a project checks its files, and its build fails on an error.
check_files() {
    cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.16)
project(files LANGUAGES CXX)
find_package(rfUtils REQUIRED)
rfutils_check_files(instrument_files catalogue.json OPTIONS --as catalogue)
END
    cp "$SOURCE/examples/data/catalogue.json" .
    cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
    cmake --build build
    echo '[]' >catalogue.json
    if cmake --build build >output.txt 2>&1; then
        fail "check_files: an error did not fail the build"
    fi
    grep -q '^catalogue.json:1:1: error: nothing is loaded: ' output.txt
    echo 'rfutils_check_files(no_files)' >>CMakeLists.txt
    if cmake -S . -B build >refusal.txt 2>&1; then
        fail "check_files: a target without files was accepted"
    fi
    grep -q 'no_files has no files' refusal.txt
    cmp "$SOURCE/tools/schemas/catalogue.schema.json" "$prefix/share/rfutils/schemas/catalogue.schema.json"
    "$prefix/bin/rfutils" check --schema setups | cmp - "$prefix/share/rfutils/schemas/setups.schema.json"
}

pkg_config() {
    export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
    test "$(pkg-config --modversion rfUtils)" = "$VERSION"
    # pkg-config escapes blanks in a folder's name for the shell.
    eval '"$CXX" -std=c++17 "$example/main.cpp"' "$(pkg-config --cflags --libs rfUtils)" -o levels
    LD_LIBRARY_PATH=$prefix/$LIBDIR expect_output ./levels
}

# The module of the moved installation runs on the library beside it, and the package's component Qml names its folder.
qml() {
    local project='cmake_minimum_required(VERSION 3.16)
project(page LANGUAGES CXX)
find_package(rfUtils REQUIRED COMPONENTS Qml)
message("imports from ${rfUtils_QML_IMPORT_PATH}")
get_target_property(plugin rfUtils::rfUtilsQml LOCATION)
message("plugin ${plugin}")'
    local modules=$prefix/$LIBDIR/qt5/qml
    echo "$project" >CMakeLists.txt
    cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$CXX" >/dev/null 2>output.txt
    grep -qxF "imports from $modules" output.txt
    grep -qxF "plugin $modules/RfUtils/librfUtilsQml.so" output.txt
    sed -i 's/COMPONENTS Qml/COMPONENTS Widgets/' CMakeLists.txt
    if cmake -S . -B build >/dev/null 2>refusal.txt; then
        fail "qml: a component that does not exist was found"
    fi

    unset LD_LIBRARY_PATH
    ldd "$modules/RfUtils/librfUtilsQml.so" >libraries.txt
    grep -qF "$modules/RfUtils/../../../librfUtils.so." libraries.txt
    if [ -x "$prefix/bin/rfutils-view" ]; then
        # The viewer finds the module beside it.
        QT_QPA_PLATFORM=minimal:enable_fonts "$prefix/bin/rfutils-view" "$SOURCE/examples/data/fm_band.csv" --screenshot viewer.png
        test -s viewer.png
    fi
    "$BUILD/tests/qml/qml_runner" -import "$modules" -input "$SOURCE/tests/qml/tst_units.qml"
}

# Built in another project, all sources of a target together; through FetchContent only configured, which adds the
# same folder.
subproject() {
    local project=$SOURCE/tests/install/subproject
    cmake -S "$project" -B fetched -G Ninja -DRFUTILS_SOURCE="$SOURCE" -DRFUTILS_FETCH=ON -DCMAKE_CXX_COMPILER="$CXX"
    cmake -S "$project" -B build -G Ninja -DRFUTILS_SOURCE="$SOURCE" -DCMAKE_CXX_COMPILER="$CXX" \
        -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0
    cmake --build build
    expect_output build/levels

    # The project's installation holds the shared library that its program runs with, nothing else of ours.
    cmake --install build --prefix prefix >/dev/null
    expect_output prefix/bin/levels
    test "$(find prefix ! -type d ! -name 'librfUtils.so.*' ! -name levels | wc -l)" -eq 0
}

rm -rf "$work"
mkdir -p "$work"
cd "$work"
"$1"
