# Run by `cmake --install`: tells the desktop of the files just installed under DATA_DIR, so
# that a .tsk file is known as a workspace at once. Skipped when DESTDIR stages a package: the
# package manager's triggers refresh the caches of the machine it is installed on. A missing
# tool is no fault: desktops without it read the folders themselves.
if(NOT "$ENV{DESTDIR}" STREQUAL "")
    return()
endif()
foreach(step "update-mime-database|mime" "update-desktop-database|applications"
             "gtk-update-icon-cache|-q;-t;-f;icons/hicolor")
    string(REPLACE "|" ";" step "${step}")
    list(POP_FRONT step tool)
    list(POP_BACK step folder)
    find_program(program ${tool})
    if(program)
        message(STATUS "Refreshing: ${tool} ${DATA_DIR}/${folder}")
        execute_process(COMMAND ${program} ${step} ${DATA_DIR}/${folder})
    endif()
    unset(program CACHE)
endforeach()
