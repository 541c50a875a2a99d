#include "Command.h"
#include "JsonWriter.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldContainerType.h"

namespace Tool
{
namespace
{
using OSG::FieldDescriptionBase;

bool is_single(FieldDescriptionBase const &field)
{
    return field.getFieldType().getCardinality() == OSG::FieldCardinality::Single;
}

void write_field(JsonWriter &json, FieldDescriptionBase const &field)
{
    json.beginObject()
        .member("name", field.getCName())
        .member("id", field.getFieldId())
        .member("mask", field.getFieldMask())
        .member("type", field.getFieldType().getContentType().getCName())
        .member("cardinality", is_single(field) ? "single" : "multi")
        .member("internal", field.isInternal())
        .member("description", field.getDocumentation())
        .endObject();
}

void write_type(JsonWriter &json, OSG::FieldContainerType const &type)
{
    json.beginObject().member("name", type.getCName()).key("parent");
    if(type.getCParentName() != nullptr)
        json.value(type.getCParentName());
    else
        json.null();
    json.member("group", type.getGroupName()).key("fields").beginArray();
    for(FieldDescriptionBase const *field : type.getOwnFieldDescs())
        write_field(json, *field);
    json.endArray()
        .member("description", type.getDocumentation())
        .member("xml", type.getFcdXml())
        .endObject();
}

void print_type(std::ostream &out, OSG::FieldContainerType const &type)
{
    out << type.getCName();
    if(type.getCParentName() != nullptr)
        out << " : " << type.getCParentName();
    out << '\n';
    for(FieldDescriptionBase const *field : type.getOwnFieldDescs())
        out << "    " << field->getFieldId() << ' ' << field->getCName() << ": "
            << field->getFieldType().getContentType().getCName()
            << (is_single(*field) ? "" : " (list)") << (field->isInternal() ? ", internal" : "")
            << '\n';
}

int run_types(CommonOptions const &options, Streams streams)
{
    auto const types = OSG::FieldContainerFactoryBase::the()->getTypes();
    if(!options.json)
    {
        for(OSG::FieldContainerType const *type : types)
            print_type(streams.out, *type);
        return Success;
    }
    JsonWriter json(streams.out);
    json.beginArray();
    for(OSG::FieldContainerType const *type : types)
        write_type(json, *type);
    json.endArray();
    streams.out << '\n';
    return Success;
}
} // namespace

void add_types_command(CLI::App &program, ChosenCommand &chosen)
{
    add_command(program, "types", "List the container types with their fields",
                std::make_shared<CommonOptions>(), run_types, chosen);
}
} // namespace Tool
