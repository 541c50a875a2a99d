#include "Command.h"
#include "JsonWriter.h"
#include "OSGSceneFileHandler.h"

namespace Tool
{
namespace
{
void write_format(JsonWriter &json, OSG::SceneFileType &type)
{
    json.beginObject().member("name", type.getName()).key("suffixes").beginArray();
    for(std::string const &suffix : type.suffixList())
        json.value(suffix);
    json.endArray()
        .member("read", type.canRead())
        .member("write", type.canWrite())
        .member("overridePriority", type.getOverridePriority())
        .endObject();
}

void print_format(std::ostream &out, OSG::SceneFileType &type)
{
    out << type.getName() << ':';
    for(std::string const &suffix : type.suffixList())
        out << " ." << suffix;
    out << (type.canRead() ? ", read" : "") << (type.canWrite() ? ", written" : "") << '\n';
}

int run_formats(CommonOptions const &options, Streams streams)
{
    auto const &types = OSG::SceneFileHandlerBase::the()->getFileTypes();
    if(!options.json)
    {
        for(OSG::SceneFileType *type : types)
            print_format(streams.out, *type);
        return Success;
    }
    JsonWriter json(streams.out);
    json.beginArray();
    for(OSG::SceneFileType *type : types)
        write_format(json, *type);
    json.endArray();
    streams.out << '\n';
    return Success;
}
} // namespace

void add_formats_command(CLI::App &program, ChosenCommand &chosen)
{
    add_command(program, "formats", "List the scene file types", std::make_shared<CommonOptions>(),
                run_formats, chosen);
}
} // namespace Tool
