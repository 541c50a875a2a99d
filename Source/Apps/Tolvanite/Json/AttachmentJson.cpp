#include "AttachmentJson.h"

#include <charconv>
#include <cstring>
#include <sstream>
#include <string>

#include "MaterialJson.h"
#include "OSGAttachment.h"
#include "OSGAttachmentContainer.h"
#include "OSGFieldHandle.h"
#include "OSGMaterial.h"
#include "OSGName.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
// The kind of a field's value, by the name of its content type.
enum class Content
{
    Text,
    Truth,
    Whole,
    Number,
    Numbers ///< several, separated by commas
};

Content content_of(OSG::FieldType const &type)
{
    char const *const name = type.getContentType().getCName();
    auto const is = [name](char const *other) { return std::strcmp(name, other) == 0; };
    if(is("std::string"))
        return Content::Text;
    if(is("bool"))
        return Content::Truth;
    if(is("Real32"))
        return Content::Number;
    bool const whole = is("Int32") || is("UInt8") || is("UInt16") || is("UInt32") || is("UInt64");
    return whole ? Content::Whole : Content::Numbers;
}

template <class Number>
void write_number(JsonWriter &json, std::string const &text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    json.value(number);
}

void write_numbers(JsonWriter &json, std::string const &text)
{
    json.beginArray();
    std::size_t end = 0;
    for(std::size_t begin = 0; begin < text.size(); begin = end + 2)
    {
        end = std::min(text.find(", ", begin), text.size());
        write_number<float>(json, text.substr(begin, end - begin));
    }
    json.endArray();
}

void write_text_form(JsonWriter &json, Content content, std::string const &text)
{
    switch(content)
    {
    case Content::Text:
        json.value(text);
        break;
    case Content::Truth:
        json.value(text == "TRUE");
        break;
    case Content::Whole:
        if(!text.empty() && text[0] == '-')
            write_number<long long>(json, text);
        else
            write_number<unsigned long long>(json, text);
        break;
    case Content::Number:
        write_number<float>(json, text);
        break;
    case Content::Numbers:
        write_numbers(json, text);
        break;
    }
}

void write_pointer(JsonWriter &json, OSG::FieldContainer *target)
{
    if(target == nullptr)
    {
        json.null();
        return;
    }
    if(auto *const material = dynamic_cast<OSG::Material *>(target))
    {
        write_material(json, material);
        return;
    }
    json.beginObject().member("type", target->getType().getCName()).key("name");
    write_name(json, dynamic_cast<OSG::AttachmentContainer *>(target));
    json.endObject();
}

void write_value(JsonWriter &json, OSG::GetFieldHandle const &field, OSG::UInt32 index)
{
    if(field.isPointerField())
    {
        write_pointer(json, field.getPointer(index));
        return;
    }
    std::ostringstream text;
    OSG::OutStream out(text);
    field.pushIndexedValueToStream(out, index);
    write_text_form(json, content_of(field.getType()), text.str());
}

void write_field(JsonWriter &json, OSG::GetFieldHandle const &field)
{
    json.key(field.getName());
    if(field.getType().getCardinality() == OSG::FieldCardinality::Single)
    {
        write_value(json, field, 0);
        return;
    }
    json.beginArray();
    for(OSG::UInt32 i = 0; i < field.size(); ++i)
        write_value(json, field, i);
    json.endArray();
}

void write_attachment(JsonWriter &json, OSG::Attachment const &attachment, char const *where)
{
    OSG::FieldContainerType const &type = attachment.getType();
    json.beginObject().member("type", type.getCName()).member("on", where);
    for(OSG::FieldDescriptionBase const *field : type.getFieldDescs())
    {
        if(!field->isInternal() &&
           field->getFieldId() != OSG::AttachmentContainer::AttachmentsFieldId)
            write_field(json, *attachment.getField(field->getFieldId()));
    }
    json.endObject();
}

/// Opens the member when the first attachment is written. The destructor closes it.
class AttachmentList
{
  public:
    explicit AttachmentList(JsonWriter &json)
        : _json(json)
    {
    }
    AttachmentList(AttachmentList const &) = delete;
    AttachmentList &operator=(AttachmentList const &) = delete;
    ~AttachmentList()
    {
        if(_open)
            _json.endArray();
    }

    void add(OSG::AttachmentContainer const *container, char const *where)
    {
        if(container == nullptr)
            return;
        for(OSG::Attachment const *attachment : *container->getMFAttachments())
        {
            if(attachment == nullptr || attachment->getType() == OSG::Name::getClassType())
                continue;
            if(!_open)
                _json.key("attachments").beginArray();
            _open = true;
            write_attachment(_json, *attachment, where);
        }
    }

  private:
    JsonWriter &_json;
    bool _open = false;
};
} // namespace

void write_attachments(JsonWriter &json, OSG::AttachmentContainer const *node,
                       OSG::AttachmentContainer const *core)
{
    AttachmentList list(json);
    list.add(node, "node");
    list.add(core, "core");
}
} // namespace Tool
