# Every file an installation holds, relative to its prefix. Included by the
# checks with SOURCE_DIR set; new translations are picked up from the sources.
set(netinfo_home_files
    bin/netinfo
    bin/netinfo-recorder
    bin/netinfo-report
    lib/libhostcore.so
    lib/libveltsdk.so
    plugins/NetInfoUIExPlugin/libNetInfoUIExPlugin.so
    plugins/NetInfoUIExPlugin/NetInfoUIExConfig.xml
    plugins/NetInfoUIExPlugin/TrendsCtrlProfile.xml
    plugins/NetInfoUIExPlugin/DataUsageLimit.ini
    skin/default/images/tree_widget_bg_line_top_curve_box.png)
foreach(n RANGE 1 9)
    list(APPEND netinfo_home_files plugins/NetInfoUIExPlugin/Icon_0${n})
endforeach()
file(GLOB netinfo_ts_files RELATIVE ${SOURCE_DIR}/data/translations ${SOURCE_DIR}/data/translations/*.ts)
foreach(ts IN LISTS netinfo_ts_files)
    string(REGEX REPLACE "\\.ts$" ".qm" qm ${ts})
    list(APPEND netinfo_home_files translations/${qm})
endforeach()

set(netinfo_desktop_files
    share/applications/netinfo.desktop
    share/icons/hicolor/48x48/apps/netinfo.png
    share/icons/hicolor/256x256/apps/netinfo.png)

# The background recorder's unit and autostart entry on a plain install.
set(netinfo_recorder_files
    share/systemd/user/netinfo-recorder.service
    etc/xdg/autostart/netinfo-recorder.desktop)

# Fails the check listing what is missing from and what is extra in <actual>.
function(netinfo_compare_files what expected actual)
    set(missing ${expected})
    list(REMOVE_ITEM missing ${actual})
    set(extra ${actual})
    list(REMOVE_ITEM extra ${expected})
    if(missing OR extra)
        list(JOIN missing "\n  " missing)
        list(JOIN extra "\n  " extra)
        message(FATAL_ERROR "${what} does not match the layout.\nMissing:\n  ${missing}\nUnexpected:\n  ${extra}")
    endif()
endfunction()
