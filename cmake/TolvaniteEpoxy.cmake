# The entry points of OpenGL and EGL: TOLVANITE_EPOXY_LIBRARY and TOLVANITE_EPOXY_INCLUDE_DIR. No header
# that is installed includes them, so users of the libraries need not find them.
find_path(TOLVANITE_EPOXY_INCLUDE_DIR epoxy/gl.h REQUIRED)
find_library(TOLVANITE_EPOXY_LIBRARY epoxy REQUIRED)
mark_as_advanced(TOLVANITE_EPOXY_INCLUDE_DIR TOLVANITE_EPOXY_LIBRARY)
