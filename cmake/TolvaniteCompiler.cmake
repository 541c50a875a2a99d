# Flags that every target of the tree is built with.

# Floating point is part of the contract: a vector path and a scalar path give the same bits.
add_compile_options(-ffp-contract=off)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(TOLVANITE_WERROR)
    add_compile_options(-Werror)
endif()
if(TOLVANITE_SANITIZE)
    add_compile_options(-fsanitize=${TOLVANITE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TOLVANITE_SANITIZE})
endif()
