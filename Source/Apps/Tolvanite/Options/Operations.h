#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "JsonWriter.h"
#include "OSGGraphOpAccount.h"
#include "OSGNode.h"
#include "Tool.h"

namespace Tool
{
/// A graph operation as a command line asks for it.
struct Operation
{
    std::string name;
    std::string params; ///< empty where none are given
};

/// Adds `--op NAME[=PARAMS]`, as often as one likes. A command line that names an operation that
/// nobody has registered is misused.
void add_operation_option(CLI::App &command, std::vector<Operation> &operations);

/// What the operations did, in their order; `done` is false where one did not go through: one line
/// has said so, and those behind it have not run.
struct OperationsResult
{
    std::vector<OSG::GraphOpAccount> accounts;
    bool done = true;
};

/// Runs the operations over `root` one after the other, commits the changes and brings the volumes
/// up to date again.
OperationsResult run_operations(OSG::Node *root, std::vector<Operation> const &operations,
                                Streams streams);

/// The member "operations", where any ran.
void write_operations(JsonWriter &json, std::vector<OSG::GraphOpAccount> const &accounts);
/// A line for each, for people.
void print_operations(std::ostream &out, std::vector<OSG::GraphOpAccount> const &accounts);
} // namespace Tool
