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
/// A graph operation of a command line.
struct Operation
{
    std::string name;
    std::string params; ///< empty if none are given
};

/// Adds the option `--op NAME[=PARAMS]`, which may be repeated. The command line is wrong if no
/// operation of that name is registered.
void add_operation_option(CLI::App &command, std::vector<Operation> &operations);

/// What the operations did, in order. `done` is false if an operation failed. A line about this has
/// then been printed, and the operations after it have not run.
struct OperationsResult
{
    std::vector<OSG::GraphOpAccount> accounts;
    bool done = true;
};

/// Runs the operations on `root` one after the other, commits the changes and updates the volumes.
OperationsResult run_operations(OSG::Node *root, std::vector<Operation> const &operations,
                                Streams streams);

/// Writes the member "operations" if any operation ran.
void write_operations(JsonWriter &json, std::vector<OSG::GraphOpAccount> const &accounts);
/// Prints a line for each operation, for people.
void print_operations(std::ostream &out, std::vector<OSG::GraphOpAccount> const &accounts);
} // namespace Tool
