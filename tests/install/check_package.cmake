# Builds the Debian package into a scratch directory and checks what it
# unpacks to: <home> under /opt/netinfo, the desktop files and command under /usr.
#   cmake -D SOURCE_DIR=.. -D BUILD_DIR=.. -D WORK_DIR=.. -D CPACK=.. -D DPKG_DEB=.. [-D LINTIAN=..]
#         -P check_package.cmake
include(${CMAKE_CURRENT_LIST_DIR}/layout.cmake)

set(out ${WORK_DIR}/package)
set(root ${out}/root)
file(REMOVE_RECURSE ${out})
execute_process(COMMAND ${CPACK} -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${out}
                RESULT_VARIABLE rc OUTPUT_VARIABLE log ERROR_VARIABLE err)
file(GLOB debs ${out}/*.deb)
list(LENGTH debs count)
if(NOT rc EQUAL 0 OR NOT count EQUAL 1)
    message(FATAL_ERROR "cpack made ${count} packages (${rc}):\n${log}${err}")
endif()

execute_process(COMMAND ${DPKG_DEB} -x ${debs} ${root} RESULT_VARIABLE rc ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "dpkg-deb cannot unpack ${debs}:\n${err}")
endif()

set(expected usr/bin/netinfo usr/bin/netinfo-recorder usr/bin/netinfo-report
    usr/lib/systemd/user/netinfo-recorder.service etc/xdg/autostart/netinfo-recorder.desktop
    usr/share/doc/netinfo/copyright usr/share/doc/netinfo/changelog.Debian.gz)
foreach(command netinfo netinfo-recorder netinfo-report)
    list(APPEND expected usr/share/man/man1/${command}.1.gz)
endforeach()
foreach(file IN LISTS netinfo_home_files)
    list(APPEND expected opt/netinfo/${file})
endforeach()
foreach(file IN LISTS netinfo_desktop_files)
    list(APPEND expected usr/${file})
endforeach()
file(GLOB_RECURSE packaged LIST_DIRECTORIES false RELATIVE ${root} ${root}/*)
netinfo_compare_files("The package" "${expected}" "${packaged}")

# The launcher runs whatever Exec names through the PATH.
file(STRINGS ${root}/usr/share/applications/netinfo.desktop exec REGEX "^Exec=")
string(REGEX REPLACE "^Exec=([^ ]+).*" "\\1" exec "${exec}")
file(READ_SYMLINK ${root}/usr/bin/${exec} target)
if(NOT target STREQUAL "/opt/netinfo/bin/netinfo")
    message(FATAL_ERROR "Exec=${exec}: /usr/bin/${exec} points to '${target}', not /opt/netinfo/bin/netinfo")
endif()

file(STRINGS ${root}/usr/lib/systemd/user/netinfo-recorder.service exec REGEX "^ExecStart=")
if(NOT exec STREQUAL "ExecStart=/opt/netinfo/bin/netinfo-recorder")
    message(FATAL_ERROR "The packaged unit starts '${exec}', not /opt/netinfo/bin/netinfo-recorder")
endif()

# dpkg-shlibdeps only warns when it fails, leaving the Qt libraries out.
execute_process(COMMAND ${DPKG_DEB} -f ${debs} Depends OUTPUT_VARIABLE depends)
if(NOT depends MATCHES "libqt6widgets6" OR NOT depends MATCHES "libqt6sql6-sqlite")
    message(FATAL_ERROR "The package's dependencies lack the Qt libraries: ${depends}")
endif()

# Where lintian exists, it finds no error but the deliberate /opt layout.
if(LINTIAN)
    execute_process(COMMAND ${LINTIAN} --tag-display-limit 0 ${debs} OUTPUT_VARIABLE said ERROR_VARIABLE said)
    string(REGEX MATCHALL "(^|\n)E: [^\n]*" errors "${said}")
    list(FILTER errors EXCLUDE REGEX " dir-or-file-in-opt ")
    if(errors)
        message(FATAL_ERROR "lintian reports errors:\n${errors}\n\nAll it said:\n${said}")
    endif()
    message(STATUS "lintian:\n${said}")
endif()
