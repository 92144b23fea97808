# Installs the build tree into a fresh prefix, compares the tree with the
# layout and runs the installed host from it.
#   cmake -D SOURCE_DIR=.. -D BUILD_DIR=.. -D WORK_DIR=.. [-D DESKTOP_VALIDATE=..] -P check_install.cmake
include(${CMAKE_CURRENT_LIST_DIR}/layout.cmake)

set(prefix ${WORK_DIR}/prefix)
set(user ${WORK_DIR}/user)
file(REMOVE_RECURSE ${prefix} ${user})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
                RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "cmake --install failed (${rc}):\n${err}")
endif()

file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${prefix} ${prefix}/*)
netinfo_compare_files("The installed tree" "${netinfo_home_files};${netinfo_desktop_files};${netinfo_recorder_files}"
                      "${installed}")
file(STRINGS ${prefix}/share/systemd/user/netinfo-recorder.service exec REGEX "^ExecStart=")
if(NOT exec STREQUAL "ExecStart=${prefix}/bin/netinfo-recorder")
    message(FATAL_ERROR "The recorder's unit starts '${exec}', not the installed ${prefix}/bin/netinfo-recorder")
endif()

if(DESKTOP_VALIDATE)
    foreach(entry share/applications/netinfo.desktop etc/xdg/autostart/netinfo-recorder.desktop)
        execute_process(COMMAND ${DESKTOP_VALIDATE} ${prefix}/${entry}
                        RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
        if(NOT rc EQUAL 0 OR out OR err)
            message(FATAL_ERROR "${entry} is not a valid desktop entry:\n${out}${err}")
        endif()
    endforeach()
endif()

# The installed host must find its libraries and its <home> by itself, and
# must keep its hands off the real user's files.
unset(ENV{LD_LIBRARY_PATH})
unset(ENV{NETINFO_LIBRARY_PATH})
set(ENV{HOME} ${user})
set(ENV{XDG_DATA_HOME} ${user}/data)
set(ENV{XDG_CONFIG_HOME} ${user}/config)
# Its own runtime folder: a window that another test runs must not take this
# start for a second instance and swallow it.
file(MAKE_DIRECTORY ${user}/run)
file(CHMOD ${user}/run DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(ENV{XDG_RUNTIME_DIR} ${user}/run)
set(ENV{QT_QPA_PLATFORM} offscreen)

execute_process(COMMAND ${prefix}/bin/netinfo --help
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 30)
if(NOT rc EQUAL 0 OR NOT out MATCHES "--screenshot")
    message(FATAL_ERROR "netinfo --help from the installed tree failed (${rc}):\n${out}${err}")
endif()

# The command-line programs run from the installed tree without a display.
foreach(command "netinfo-recorder;--version;netinfo-recorder 1" "netinfo-report;--help;--json")
    list(GET command 0 program)
    list(GET command 1 option)
    list(GET command 2 expected)
    execute_process(COMMAND ${prefix}/bin/${program} ${option}
                    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 30)
    if(NOT rc EQUAL 0 OR NOT out MATCHES "${expected}")
        message(FATAL_ERROR "${program} ${option} from the installed tree failed (${rc}):\n${out}${err}")
    endif()
endforeach()

# A short real run: the module, its data files and the translations load
# from the installed <home>.
execute_process(COMMAND ${prefix}/bin/netinfo --quit-after 0.5 --screenshot ${user}/window.png
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
if(NOT rc EQUAL 0 OR NOT EXISTS ${user}/window.png OR err MATCHES "no English translation")
    message(FATAL_ERROR "netinfo did not run from the installed tree (${rc}):\n${out}${err}")
endif()

# A clean exit leaves the ledger whole: every reader closed before the
# writer, whose close folds the journal back into the file.
file(GLOB journal ${user}/data/netinfo/usage.sqlite-wal)
if(EXISTS ${user}/data/netinfo/usage.sqlite AND journal)
    message(FATAL_ERROR "netinfo left its journal beside the ledger: ${journal}")
endif()
