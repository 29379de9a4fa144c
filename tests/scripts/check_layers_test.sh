#!/bin/bash
# Feeds scripts/check-layers small trees with one fault each: it must name the fault, and pass the tree without one.
set -euo pipefail

checkLayers=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/scripts/check-layers
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A sound tree, which every case spoils in its own way.
makeTree() {
    tree=$work/$1
    mkdir -p "$tree"/{framework/{base,window,odbc,qt},query,db,tests/query}
    echo '#include <string>' >"$tree/framework/base/text.h"
    echo '#include "framework/base/text.h"' >"$tree/framework/window/messagebox.h"
    echo 'int area();' >"$tree/framework/window/wnd.h"
    echo '#include "framework/base/text.h"' >"$tree/query/compose.h"
    echo '#include "framework/window/messagebox.h"' >"$tree/db/catalog.cpp"
    echo '#include "query/compose.h"' >"$tree/tests/query/compose_test.cpp"
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
    output=$("$checkLayers" "$tree" 2>&1) || code=$?
    if [[ -z $report && $code == 0 && -z $output ]] || [[ -n $report && $code != 0 && $output == *"$report"* ]]; then
        return
    fi
    printf '%s: exit %d, "%s" expected, reported:\n%s\n' "$name" "$code" "$report" "$output"
    failed=1
}

expect SoundTreePasses query/compose.cpp '#include "query/compose.h"'
expect HeaderBesideItsIncluderPasses query/compose.cpp '#include "compose.h"'
expect UpwardIncludeIsListed framework/base/text.cpp $'\n#include "query/compose.h"' \
    'framework/base/text.cpp:2: framework/base may not include query/compose.h'
expect NeighbourIncludeIsListed framework/odbc/session.cpp '#  include "framework/window/wnd.h"' \
    'framework/odbc may not include framework/window/wnd.h'
expect AllowedHeaderOpensNotItsFolder db/database.cpp '#include "framework/window/wnd.h"' \
    'db/database.cpp:1: db may not include framework/window/wnd.h'
expect WayAroundTheRootIsListed query/compose.cpp '#include "../db/catalog.cpp"' \
    '"../db/catalog.cpp" is no path from the root'
expect UnknownHeaderIsListed query/compose.cpp '#include "query/gone.h"' '"query/gone.h" is no path from the root'
expect ToolkitHeaderStaysInItsFolder query/compose.cpp '#include <QtWidgets/QWidget>' \
    '<QtWidgets/QWidget> belongs in framework/qt'
expect ToolkitsOldHeaderNamesAreKnown grid/grid.cpp '#include <qwidget.h>' '<qwidget.h> belongs in framework/qt'
expect HeaderOfTheToolkitsFolderCompilesWithIt framework/qt/window.h $'#include <QtWidgets/QWidget>\nextern QWidget* frame;'
expect DatabaseHeaderStaysInItsFolders query/compose.cpp '#include <sqlext.h>' '<sqlext.h> belongs in framework/odbc'
expect OtherDatabaseLibraryIsNotMistaken query/compose.cpp '#include <sqlite3.h>'
expect HeaderThatNeedsAnotherIsListed query/list.h 'std::string name();' 'query/list.h: does not compile alone'
expect ForgottenTestIsListed tests/query/forgotten_test.cpp '' 'tests/query/forgotten_test.cpp: no CMakeLists.txt names it'
expect FolderWithoutRowIsListed util/misc.cpp '#include <string>' 'folder util has no row'
exit "$failed"
