#pragma once

#include <string>
#include <vector>

namespace OSG::Test
{
struct FieldFacts
{
    char const *name;
    unsigned id;
    char const *type; // of one value
    bool multi;
    bool internal;
    char const *prose;
};

/// What the outside world relies on of a container class of the library.
struct ContainerFacts
{
    char const *name;
    char const *parent;
    char const *group;
    char const *folder; // of its description, below the library's
    char const *prose;
    std::vector<FieldFacts> fields;
};

/// All containers of the library, in the order of its start-up.
std::vector<ContainerFacts> const &container_table();
} // namespace OSG::Test
