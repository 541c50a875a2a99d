#include "Operations.h"

#include "OSGChangeList.h"
#include "OSGGraphOpFactory.h"
#include "OSGShownText.h"
#include "OSGThread.h"

namespace Tool
{
namespace
{
OSG::GraphOpFactoryBase &factory() { return *OSG::GraphOpFactoryBase::the(); }

Operation operation_of(std::string const &text)
{
    std::size_t const end = text.find('=');
    if(end == std::string::npos)
        return {text, {}};
    return {text.substr(0, end), text.substr(end + 1)};
}

bool is_registered(std::string const &name)
{
    return OSG::UnrecordedRefPtr<OSG::GraphOp>(factory().create(name.c_str())) != nullptr;
}

struct Row
{
    char const *key;
    char const *words;
    OSG::UInt64 OSG::GraphOpAccount::*count;
};
constexpr Row Rows[] = {
    {"removed", "removed", &OSG::GraphOpAccount::removed},
    {"moved", "moved", &OSG::GraphOpAccount::moved},
    {"baked", "baked", &OSG::GraphOpAccount::baked},
    {"materialsReplaced", "materials replaced", &OSG::GraphOpAccount::materialsReplaced},
    {"namesCleared", "names cleared", &OSG::GraphOpAccount::namesCleared},
};
} // namespace

void add_operation_option(CLI::App &command, std::vector<Operation> &operations)
{
    command
        .add_option_function<std::vector<std::string>>(
            "--op",
            [&operations](std::vector<std::string> const &texts)
            {
                for(std::string const &text : texts)
                {
                    operations.push_back(operation_of(text));
                    if(!is_registered(operations.back().name))
                        throw CLI::ValidationError("--op",
                                                   "no graph operation " + operations.back().name);
                }
            },
            "Graph operation to run on the scene, NAME[=PARAMS]; may be repeated")
        ->type_size(1)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

OperationsResult run_operations(OSG::Node *root, std::vector<Operation> const &operations,
                                Streams streams)
{
    OperationsResult result;
    for(Operation const &wanted : operations)
    {
        OSG::UnrecordedRefPtr<OSG::GraphOp> const operation(factory().create(wanted.name.c_str()));
        if(!wanted.params.empty())
            operation->setParams(wanted.params);
        result.accounts.push_back(OSG::traverse_accounted(*operation, root, wanted.params));
        OSG::Thread::getCurrentChangeList()->commitChanges();
        result.done = result.accounts.back().wentThrough;
        if(result.done)
            continue;
        complain(streams, wanted.name + " did not go through");
        break;
    }
    if(!operations.empty())
        root->updateVolume();
    return result;
}

void write_operations(JsonWriter &json, std::vector<OSG::GraphOpAccount> const &accounts)
{
    if(accounts.empty())
        return;
    json.key("operations").beginArray();
    for(OSG::GraphOpAccount const &account : accounts)
    {
        json.beginObject()
            .member("name", account.name)
            .member("params", account.params)
            .member("nodesBefore", account.nodesBefore)
            .member("nodesAfter", account.nodesAfter)
            .member("seconds", account.seconds);
        for(Row const &row : Rows)
            json.member(row.key, account.*row.count);
        json.endObject();
    }
    json.endArray();
}

void print_operations(std::ostream &out, std::vector<OSG::GraphOpAccount> const &accounts)
{
    for(OSG::GraphOpAccount const &account : accounts)
    {
        out << OSG::shown_text(account.name) << ": " << account.nodesBefore << " nodes to "
            << account.nodesAfter;
        for(Row const &row : Rows)
            if(account.*row.count != 0)
                out << ", " << account.*row.count << ' ' << row.words;
        out << " in " << account.seconds << " s\n";
    }
}
} // namespace Tool
