# SPDX-License-Identifier: MIT
# Runs both programs on tiny lists: they end well, no benchmark is missing, the table has every row. No time is
# judged here.
cmake_minimum_required(VERSION 3.25)

function(run output)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE errors)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN} ended with ${status}:\n${text}\n${errors}")
    endif()
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(require text pattern)
    if(NOT text MATCHES "${pattern}")
        message(FATAL_ERROR "no line matches '${pattern}' in:\n${text}")
    endif()
endfunction()

run(table ${COMPARE} --rounds 1 --folder ${FOLDER} 500 1000)
set(works
    "open +COUNT .* SQLite backup" "open +COUNT .* bytes read" "open and first find" "save over the old file"
    "save as a new file" "CSV import" "CSV import, progress" "CSV export" "find by RowID" "find by UniqueID"
    "match list, some 50" "match list, some 1000" "50 rows anywhere" "add a row" "rename a row" "delete a row"
    "memory over payload, a row")
foreach(work IN LISTS works)
    foreach(count 500 1000)
        if(work MATCHES "COUNT")
            string(REPLACE "COUNT" "${count}" pattern "${work}")
        else()
            set(pattern "${work} +${count} ")
        endif()
        require("${table}" "(^|\n)${pattern}")
    endforeach()
endforeach()
foreach(work "open" "open and first find" "save over the old file" "save as a new file" "CSV import"
    "CSV import, progress" "CSV export" "find by RowID" "find by UniqueID" "match list, some 50"
    "match list, some 1000" "50 rows anywhere" "add a row" "rename a row" "delete a row")
    require("${table}" "\ngrowth: ${work} +1000 ")
endforeach()

run(report ${BENCH} --sizes=1000 --benchmark_min_time=0.001)
foreach(name FindByRowId FindByUniqueId MatchListOf50 MatchListOf1000 FiftyRowsAnywhere AddRow RenameRow DeleteRow
    SplitCsv SortNames LoadCatalogue SaveCatalogue)
    require("${report}" "\n${name}/1000[/ ]")
endforeach()
