# Flags that every target of the tree is built with.

# Floating point is part of the contract: a vector path and a scalar path give the same bits.
add_compile_options(-ffp-contract=off)
# Log lines name their source from the root of the tree on, wherever the tree lies.
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
