#!/bin/bash
# Feeds scripts/check-layers small trees with one fault each: it must name the fault, and pass the tree without one.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/scripts
checkLayers=$scripts/check-layers
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A sound tree, which every case spoils in its own way.
makeTree() {
    tree=$work/$1
    mkdir -p "$tree"/{kortavin/{base,window,odbc,qt,query,db},tests/query}
    echo '#include <cstddef>' >"$tree/kortavin/base/text.h"
    echo '#include "kortavin/base/text.h"' >"$tree/kortavin/window/messagebox.h"
    echo 'int area();' >"$tree/kortavin/window/wnd.h"
    echo '#include "kortavin/base/text.h"' >"$tree/kortavin/query/compose.h"
    echo '#include "kortavin/window/messagebox.h"' >"$tree/kortavin/db/catalog.cpp"
    echo '#include "kortavin/query/compose.h"' >"$tree/tests/query/compose_test.cpp"
    echo 'kortavin_test(query SOURCES compose_test.cpp)' >"$tree/tests/query/CMakeLists.txt"
}

failed=0
# expect NAME FILE CONTENT REPORT: the file with that content makes the check fail and report this; without a REPORT,
# it must pass.
expect() {
    local name=$1 file=$2 content=$3 report=${4:-} output code=0
    makeTree "$name"
    mkdir -p "$(dirname "$tree/$file")"
    echo "$content" >"$tree/$file"
    output=$(bash "$checkLayers" "$tree" 2>&1) || code=$?
    if [[ -z $report && $code == 0 && -z $output ]] || [[ -n $report && $code != 0 && $output == *"$report"* ]]; then
        return
    fi
    printf '%s: exit %d, "%s" expected, reported:\n%s\n' "$name" "$code" "$report" "$output"
    failed=1
}

expect SoundTreePasses kortavin/query/compose.cpp '#include "kortavin/query/compose.h"'
expect HeaderBesideItsIncluderPasses kortavin/query/compose.cpp '#include "compose.h"'
expect UpwardIncludeIsListed kortavin/base/text.cpp $'\n#include "kortavin/query/compose.h"' \
    'kortavin/base/text.cpp:2: kortavin/base may not include kortavin/query/compose.h'
expect NeighbourIncludeIsListed kortavin/odbc/session.cpp '#  include "kortavin/window/wnd.h"' \
    'kortavin/odbc may not include kortavin/window/wnd.h'
expect AllowedHeaderOpensNotItsFolder kortavin/db/database.cpp '#include "kortavin/window/wnd.h"' \
    'kortavin/db/database.cpp:1: kortavin/db may not include kortavin/window/wnd.h'
expect WayAroundTheRootIsListed kortavin/query/compose.cpp '#include "../db/catalog.cpp"' \
    '"../db/catalog.cpp" is no path from the root'
expect UnknownHeaderIsListed kortavin/query/compose.cpp '#include "kortavin/query/gone.h"' '"kortavin/query/gone.h" is no path from the root'
expect ToolkitHeaderStaysInItsFolder kortavin/query/compose.cpp '#include <QtWidgets/QWidget>' \
    '<QtWidgets/QWidget> belongs in kortavin/qt'
expect ToolkitsOldHeaderNamesAreKnown kortavin/grid/grid.cpp '#include <qwidget.h>' '<qwidget.h> belongs in kortavin/qt'
expect HeaderOfTheToolkitsFolderCompilesWithIt kortavin/qt/window.h $'#include <QtWidgets/QWidget>\nextern QWidget* frame;'
expect DatabaseHeaderStaysInItsFolders kortavin/query/compose.cpp '#include <sqlext.h>' '<sqlext.h> belongs in kortavin/odbc'
expect OtherDatabaseLibraryIsNotMistaken kortavin/query/compose.cpp '#include <sqlite3.h>'
expect HeaderThatNeedsAnotherIsListed kortavin/query/list.h 'std::string name();' 'kortavin/query/list.h: does not compile alone'
expect ForgottenTestIsListed tests/query/forgotten_test.cpp '' 'tests/query/forgotten_test.cpp: no CMakeLists.txt names it'
expect FolderWithoutRowIsListed util/misc.cpp '#include <string>' 'folder util has no row'

# Only a spoiled table has a circle.
mkdir "$work/scripts"
sed "s|\[kortavin/base\]=''|[kortavin/base]='kortavin/query/definition.h'|" "$checkLayers" >"$work/scripts/check-layers"
cp "$scripts/common.sh" "$work/scripts"
checkLayers=$work/scripts/check-layers
expect CircleIsListed kortavin/query/compose.cpp '' 'a circle in the table: kortavin/base kortavin/query'
exit "$failed"
