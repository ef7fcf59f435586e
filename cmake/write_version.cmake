# cmake -DSOURCES=FOLDER -DNUMBER=1.3 -DOUTPUT=FILE -P write_version.cmake: writes the version source, and beside it
# the list of git files that change with the commit. The commit comes from git, else from cmake/commit.txt, which git
# fills in when it creates an archive.
set(commit "")
set(watched "")
find_program(GIT git)
if(GIT AND EXISTS ${SOURCES}/.git)
    # the tree may belong to another user, as under sudo
    set(git ${GIT} -c safe.directory=* -C ${SOURCES})
    execute_process(COMMAND ${git} log -1 --no-show-signature --format=%H\ %cs OUTPUT_VARIABLE commit
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    execute_process(COMMAND ${git} rev-parse --git-path HEAD --git-path logs/HEAD OUTPUT_VARIABLE watched
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT commit)
    file(STRINGS ${SOURCES}/cmake/commit.txt commit LIMIT_COUNT 1)
endif()

if(commit MATCHES "^([0-9a-f]+) ([0-9-]+)$")
    string(SUBSTRING ${CMAKE_MATCH_1} 0 12 commit)
    set(version "${NUMBER} (commit ${commit} of ${CMAKE_MATCH_2})")
elseif(DEFINED ENV{SOURCE_DATE_EPOCH})
    string(TIMESTAMP date %Y-%m-%d UTC)
    set(version "${NUMBER} (unknown commit, ${date})")
else()
    set(version "${NUMBER} (unknown commit)")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/../src/runtime/version.cpp.in ${OUTPUT} @ONLY)

set(names "")
string(REPLACE "\n" ";" watched "${watched}")
foreach(name ${watched})
    get_filename_component(name ${name} ABSOLUTE BASE_DIR ${SOURCES})
    if(EXISTS ${name})
        string(REPLACE " " "\\ " name "${name}")
        string(APPEND names " ${name}")
    endif()
endforeach()
file(WRITE ${OUTPUT}.d "${OUTPUT}:${names}\n")
