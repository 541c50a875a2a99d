#include "Command.h"
#include "JsonWriter.h"
#include "OSGGraphOpFactory.h"

namespace Tool
{
namespace
{
int run_ops(CommonOptions const &options, Streams streams)
{
    auto const &prototypes = OSG::GraphOpFactoryBase::the()->getPrototypes();
    if(!options.json)
    {
        // A usage text begins with a name for people, which may differ from the name that --op
        // takes.
        for(auto const &prototype : prototypes)
            streams.out << prototype->getName() << '\n' << prototype->usage();
        return Success;
    }
    JsonWriter json(streams.out);
    json.beginArray();
    for(auto const &prototype : prototypes)
        json.beginObject()
            .member("name", prototype->getName())
            .member("usage", prototype->usage())
            .endObject();
    json.endArray();
    streams.out << '\n';
    return Success;
}
} // namespace

void add_ops_command(CLI::App &program, ChosenCommand &chosen)
{
    add_command(program, "ops", "List the graph operations", std::make_shared<CommonOptions>(),
                run_ops, chosen);
}
} // namespace Tool
