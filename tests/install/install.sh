#!/usr/bin/env bash
# install.sh TEST: one test of the installation. CMakeLists.txt gives BUILD, SOURCE, WORK, CXX,
# LIBDIR and VERSION, and what goes with the major version QT: the library's NAME, the folder INCLUDE of its headers and the
# SUFFIX of programs.
set -euo pipefail

prefix=$WORK/prefix
work=$WORK/$1
example=$work/minimal
viewer=rfutils-view$SUFFIX
command=rfutils$SUFFIX

fail() {
    echo "install.$1" >&2
    exit 1
}

expect_output() { # program
    diff "$example/expected.txt" <("$1")
}

# The example with the package and the target of this version.
copy_example() {
    cp -r "$SOURCE/examples/minimal" "$example"
    sed -i "s/find_package(rfUtils/find_package($NAME/; s/rfUtils::rfUtils/rfUtils::$NAME/" "$example/CMakeLists.txt"
}

# Installs into another folder and moves it, so that the other tests show that no file holds its path.
tree() {
    rm -rf "$prefix"
    cmake --install "$BUILD" --prefix "$work/prefix" >/dev/null
    mv "$work/prefix" "$prefix"
    local library=$prefix/$LIBDIR/lib$NAME.so
    test "$(readlink "$library")" = "lib$NAME.so.${VERSION%%.*}"
    test "$(readlink "$library.${VERSION%%.*}")" = "lib$NAME.so.$VERSION"
    readelf -d "$library" | grep -q "SONAME.*\[lib$NAME.so.${VERSION%%.*}\]"
    test -d "$prefix/$INCLUDE/rfUtils/units"
    test ! -e "$prefix/$INCLUDE/rfUtils/detail"
    if grep -rIl "$work" "$prefix"; then
        fail "tree: a file holds the path of its installation"
    fi
    if [ -x "$prefix/bin/$viewer" ]; then
        test "$(env -u LD_LIBRARY_PATH "$prefix/bin/$viewer" --version)" = "rfutils-view $VERSION"
        test -f "$prefix/share/applications/$viewer.desktop"
        test -f "$prefix/share/icons/hicolor/scalable/apps/$viewer.svg"
    fi
    if [ -x "$prefix/bin/$command" ]; then
        test "$(env -u LD_LIBRARY_PATH "$prefix/bin/$command" --version)" = "rfutils $VERSION"
    fi
}

# What each component holds of a whole installation.
expected_component() { # path
    case $1 in
        ./$LIBDIR/lib$NAME.so.*) echo runtime ;;
        ./include/* | ./$LIBDIR/cmake/* | ./$LIBDIR/pkgconfig/* | ./$LIBDIR/lib$NAME.so) echo dev ;;
        ./share/man/man3/*) echo dev ;;
        ./bin/$viewer | ./share/applications/* | ./share/icons/* | ./share/metainfo/* | ./share/*/*rfutils-view*) echo viewer ;;
        ./bin/$command | ./share/man/* | ./share/bash-completion/* | ./share/zsh/* | ./share/fish/* | ./share/$command/*) echo tools ;;
        ./$LIBDIR/qt$QT/qml/RfUtils/*) echo qml ;;
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
    printf 'cmake_minimum_required(VERSION 3.16)\nproject(page)\nfind_package(%s REQUIRED COMPONENTS Qml)\n' \
        "$NAME" >page/CMakeLists.txt
    if cmake -S page -B page/build -DCMAKE_PREFIX_PATH="$PWD/library" >/dev/null 2>refusal.txt; then
        fail "components: the package found a module that is not installed"
    fi

    if [ -d tools ]; then
        if [ "$QT" -eq 5 ]; then  # the pages of the programs on Qt 5 are those of both
            test -f tools/share/man/man1/rfutils-convert.1
            test -f tools/share/man/man5/rfutils-formats.5
            test -f tools/share/bash-completion/completions/rfutils
            test -f tools/share/zsh/site-functions/_rfutils
            test -f tools/share/fish/vendor_completions.d/rfutils.fish
        fi
        install_components command runtime tools
        test "$("command/bin/$command" --version)" = "rfutils $VERSION"
    fi
    if [ -d viewer ]; then
        install_components window runtime qml viewer
        QT_QPA_PLATFORM=minimal:enable_fonts QT_QUICK_BACKEND=software "window/bin/$viewer" "$SOURCE/examples/data/fm_band.csv" \
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
    local documents=doc/share/doc/$NAME
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
    cmake -S "$SOURCE" -B build -G Ninja -DRFUTILS_QT="$QT" -DRFUTILS_BUILD_TESTS=OFF -DRFUTILS_BUILD_TOOLS=OFF -DRFUTILS_BUILD_QML=OFF \
        -DRFUTILS_BUILD_PYTHON=OFF -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build build >/dev/null

    mkdir -p "prefix/$INCLUDE/rfUtils/units"
    touch "prefix/$INCLUDE/rfUtils/units/own.h"
    cmake --install build --prefix "$PWD/prefix" >/dev/null
    test -L "prefix/$LIBDIR/lib$NAME.so"
    cmake --build build --target uninstall >/dev/null
    test "$(find prefix ! -type d)" = "prefix/$INCLUDE/rfUtils/units/own.h"
    test ! -e "prefix/share/doc/$NAME"
    test ! -e "prefix/$LIBDIR/cmake/$NAME"

    # Two components, below DESTDIR.
    for component in runtime doc; do
        DESTDIR=$PWD/stage cmake --install build --component $component --prefix /usr >/dev/null
    done
    test -f "stage/usr/share/doc/$NAME/README.md"
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
    flags="-std=c++17 -fPIC -fsyntax-only $(pkg-config --cflags "Qt${QT}Core")"
    (cd "$prefix/$INCLUDE" && find rfUtils -name '*.h' -printf '#include <%p>\n') >all.cpp
    # shellcheck disable=SC2086  # the flags are words
    "$CXX" $flags -I "$prefix/$INCLUDE" all.cpp
    # A macro that changes the layout of a class is refused.
    # shellcheck disable=SC2086
    if "$CXX" $flags -DBOOST_CB_ENABLE_DEBUG=1 -I "$prefix/$INCLUDE" all.cpp 2>refusal.txt; then
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
    sed "s/find_package($NAME/& $next/" "$example/CMakeLists.txt" >next/CMakeLists.txt
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
    cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.16)
project(files LANGUAGES CXX)
find_package($NAME REQUIRED)
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
    cmp "$SOURCE/tools/schemas/catalogue.schema.json" "$prefix/share/$command/schemas/catalogue.schema.json"
    "$prefix/bin/$command" check --schema setups | cmp - "$prefix/share/$command/schemas/setups.schema.json"
}

pkg_config() {
    export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
    test "$(pkg-config --modversion "$NAME")" = "$VERSION"
    # pkg-config escapes blanks in a folder's name for the shell.
    eval '"$CXX" -std=c++17 "$example/main.cpp"' "$(pkg-config --cflags --libs "$NAME")" -o levels
    LD_LIBRARY_PATH=$prefix/$LIBDIR expect_output ./levels
}

# The module of the moved installation runs on the library beside it, and the package's component Qml names its folder.
qml() {
    local project='cmake_minimum_required(VERSION 3.16)
project(page LANGUAGES CXX)
find_package('$NAME' REQUIRED COMPONENTS Qml)
message("imports from ${'$NAME'_QML_IMPORT_PATH}")
get_target_property(plugin rfUtils::'$NAME'Qml LOCATION)
message("plugin ${plugin}")'
    local modules=$prefix/$LIBDIR/qt$QT/qml
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
    grep -qF "$modules/RfUtils/../../../lib$NAME.so." libraries.txt
    if [ -x "$prefix/bin/$viewer" ]; then
        # The viewer finds the module beside it.
        QT_QPA_PLATFORM=minimal:enable_fonts "$prefix/bin/$viewer" "$SOURCE/examples/data/fm_band.csv" --screenshot viewer.png
        test -s viewer.png
    fi
    "$BUILD/tests/qml/qml_runner" -import "$modules" -input "$SOURCE/tests/qml/tst_units.qml"
}

# Built in another project, all sources of a target together; through FetchContent only configured, which adds the
# same folder.
subproject() {
    local project=$SOURCE/tests/install/subproject
    cmake -S "$project" -B fetched -G Ninja -DRFUTILS_QT="$QT" -DRFUTILS_NAME="$NAME" -DRFUTILS_SOURCE="$SOURCE" -DRFUTILS_FETCH=ON -DCMAKE_CXX_COMPILER="$CXX"
    cmake -S "$project" -B build -G Ninja -DRFUTILS_QT="$QT" -DRFUTILS_NAME="$NAME" -DRFUTILS_SOURCE="$SOURCE" -DCMAKE_CXX_COMPILER="$CXX" \
        -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0
    cmake --build build
    expect_output build/levels

    # The project's installation holds the shared library that its program runs with, nothing else of ours.
    cmake --install build --prefix prefix >/dev/null
    expect_output prefix/bin/levels
    test "$(find prefix ! -type d ! -name "lib$NAME.so.*" ! -name levels | wc -l)" -eq 0
}

# One prefix holds both versions, and no program gets a mix of them.
side_by_side() {
    cmake -S "$SOURCE" -B other -G Ninja -DRFUTILS_QT=5 -DRFUTILS_BUILD_TESTS=OFF -DRFUTILS_BUILD_TOOLS=OFF \
        -DRFUTILS_BUILD_QML=OFF -DRFUTILS_BUILD_PYTHON=OFF \
        -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build other >/dev/null
    cmake --install other --prefix "$PWD/both" >/dev/null
    (cd both && find . ! -type d | LC_ALL=C sort) >other.txt
    (cd "$prefix" && find . ! -type d | LC_ALL=C sort) >own.txt
    test -z "$(LC_ALL=C comm -12 own.txt other.txt)"
    # Nor do programs, module, pages and data bear the names of the other version.
    test -z "$(grep -E '/(rfutils|rfutils-view)([./]|$)|/qt5/' own.txt)"
    diff -r both/include/rfUtils "$prefix/$INCLUDE/rfUtils"
    cp -a "$prefix/." both

    cmake -S "$example" -B build -DCMAKE_PREFIX_PATH="$PWD/both" -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build build >/dev/null
    expect_output build/levels
    cmake -S "$SOURCE/examples/minimal" -B build5 -DCMAKE_PREFIX_PATH="$PWD/both" -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
    cmake --build build5 >/dev/null
    expect_output build5/levels

    local mix
    for mix in "rfUtils::rfUtils rfUtils::rfUtilsQt6" "rfUtils::rfUtils Qt6::Core" "rfUtils::rfUtilsQt6 Qt5::Core"; do
        rm -rf mixed
        mkdir mixed
        cp "$example/main.cpp" mixed
        printf '%s\n' 'cmake_minimum_required(VERSION 3.16)' 'project(mixed LANGUAGES CXX)' \
            'set(QT_NO_CREATE_VERSIONLESS_TARGETS ON)' 'find_package(rfUtils REQUIRED)' 'find_package(rfUtilsQt6 REQUIRED)' \
            'add_executable(mixed main.cpp)' "target_link_libraries(mixed PRIVATE $mix)" >mixed/CMakeLists.txt
        if cmake -S mixed -B mixed/build -DCMAKE_PREFIX_PATH="$PWD/both" >/dev/null 2>refusal.txt; then
            fail "side_by_side: $mix were accepted in one program"
        fi
        grep -q QT_MAJOR_VERSION refusal.txt
    done
}

rm -rf "$work"
mkdir -p "$work"
cd "$work"
copy_example
"$1"
