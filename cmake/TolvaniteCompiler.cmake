# The compiler flags of all targets of the tree.

# Results are promised to the last bit, and a vector path gives the same bits as a scalar path. No
# contraction, then.
add_compile_options(-ffp-contract=off)
# Log lines name their source relative to the root of the tree.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(TOLVANITE_WERROR)
    add_compile_options(-Werror)
endif()
if(TOLVANITE_SANITIZE)
    add_compile_options(-fsanitize=${TOLVANITE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TOLVANITE_SANITIZE})
endif()
if(TOLVANITE_COMPILE_TIMES)
    set_property(GLOBAL PROPERTY RULE_LAUNCH_COMPILE
        "${PROJECT_SOURCE_DIR}/Tools/timed-compile ${PROJECT_BINARY_DIR}/compile_times.tsv")
endif()
