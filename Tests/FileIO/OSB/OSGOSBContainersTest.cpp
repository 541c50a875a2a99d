/// \file
/// Every container of the process through the binary scene format, by its descriptions alone.

#include <gtest/gtest.h>

#include "ContainerFields.h"
#include "OSGBinaryDataHandler.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBReader.h"
#include "OSGOSBWriter.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

/// Equal values, and pointers to containers of the same types.
void expect_same_fields(FieldContainer const &expected, FieldContainer const &actual)
{
    for(FieldDescriptionBase const *field : expected.getType().getFieldDescs())
    {
        if(std::string(field->getCName()) == "volume")
            continue;
        SCOPED_TRACE(field->getName());
        FieldValue const wanted = value_of(expected, *field);
        FieldValue const found = value_of(actual, *field);
        EXPECT_EQ(found.texts, wanted.texts);
        ASSERT_EQ(found.pointers.size(), wanted.pointers.size());
        for(std::size_t i = 0; i < wanted.pointers.size(); ++i)
        {
            if(!is_counted(*field))
                continue;
            ASSERT_NE(found.pointers[i], nullptr);
            EXPECT_EQ(&found.pointers[i]->getType(), &wanted.pointers[i]->getType());
        }
    }
}

using Elements = std::vector<std::unique_ptr<OSBElementBase>>;

std::unique_ptr<OSBElementBase> element_of(FieldContainer const &container, OSBRootElement &root)
{
    return OSBElementFactory::the()->createElement(container.getType().getName(), &root);
}

/// The records of a container and of all that it leads to.
std::vector<UInt8> records_of(FieldContainer *container, OSBRootElement::ContainerList &all)
{
    MemoryBinaryDataHandler out;
    OSBRootElement root(out);
    root.addContainer(container);
    Elements elements;
    for(std::size_t i = 0; i < root.getContainers().size(); ++i)
    {
        elements.push_back(element_of(*root.getContainers()[i], root));
        elements.back()->preWrite(root.getContainers()[i]);
    }
    for(auto const &element : elements)
        element->write();
    all = root.getContainers();
    return out.getBytes();
}

TEST(OSBContainers, EveryFieldOfEveryContainerComesBack)
{
    for(FieldContainerType *type : concrete_types())
    {
        SCOPED_TRACE(type->getName());
        std::vector<ContainerPtr> kept;
        ContainerPtr const container(type->createContainer());
        fill_fields(*container, kept);
        OSBRootElement::ContainerList all;
        MemoryBinaryDataHandler in(records_of(container, all));

        OSBRootElement root(in);
        StreamIdMap ids;
        Elements elements;
        for(FieldContainer const *each : all)
        {
            elements.push_back(element_of(*each, root));
            elements.back()->read(each->getType().getName());
            ids.add(static_cast<UInt32>(elements.size()), elements.back()->getContainer());
        }
        EXPECT_EQ(in.getRest(), 0u);
        for(auto const &element : elements)
            element->postMap();
        EXPECT_EQ(&elements[0]->getContainer()->getType(), type);
        expect_same_fields(*container, *elements[0]->getContainer());
    }
}
} // namespace
} // namespace OSG
