# What the desktop on X11 needs: TOLVANITE_XCB_LIBRARIES and TOLVANITE_XCB_INCLUDE_DIR, empty where
# something is missing or TOLVANITE_X11 is off. The library hides XCB, so its users need not find it.
set(TOLVANITE_XCB_LIBRARIES "")
if(TOLVANITE_X11)
    find_path(TOLVANITE_XCB_INCLUDE_DIR xcb/xfixes.h)
    find_path(TOLVANITE_KEYSYM_INCLUDE_DIR X11/keysym.h)
    find_library(TOLVANITE_XCB_LIBRARY xcb)
    find_library(TOLVANITE_XCB_XFIXES_LIBRARY xcb-xfixes)
    mark_as_advanced(TOLVANITE_XCB_INCLUDE_DIR TOLVANITE_KEYSYM_INCLUDE_DIR TOLVANITE_XCB_LIBRARY
        TOLVANITE_XCB_XFIXES_LIBRARY)
    if(TOLVANITE_XCB_INCLUDE_DIR AND TOLVANITE_KEYSYM_INCLUDE_DIR AND TOLVANITE_XCB_LIBRARY
            AND TOLVANITE_XCB_XFIXES_LIBRARY)
        set(TOLVANITE_XCB_LIBRARIES ${TOLVANITE_XCB_LIBRARY} ${TOLVANITE_XCB_XFIXES_LIBRARY})
    else()
        message(STATUS "XCB with XFixes not found, the desktop on X11 is left out")
    endif()
endif()
