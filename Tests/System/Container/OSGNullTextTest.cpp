/// \file
/// A name that is null is one that nobody has; a text that is null is one that does not read.

#include <sstream>

#include <gtest/gtest.h>

#include "OSGFieldConnector.h"
#include "OSGFieldContainerFactory.h"
#include "OSGGraphOpFactory.h"
#include "OSGGraphOpParamSet.h"
#include "OSGManyFields.h"
#include "OSGName.h"
#include "OSGOutStream.h"
#include "OSGPathHandler.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
constexpr char const *Null = nullptr;
} // namespace

TEST(NullText, NamesNoFieldAndNoType)
{
    NodePtr const node = make_group();
    EXPECT_EQ(node->getField(Null), nullptr);
    EXPECT_EQ(node->editField(Null), nullptr);
    EXPECT_EQ(node->getFieldDescription(Null), nullptr);
    EXPECT_EQ(Node::getClassType().getFieldDesc(Null), nullptr);
    EXPECT_EQ(TypeFactory::the().findType(Null), nullptr);
    EXPECT_EQ(FieldContainerFactoryBase::the()->findType(Null), nullptr);
    EXPECT_FALSE(FieldContainerFactoryBase::the()->createContainer(Null));
    EXPECT_EQ(node->findNamedComponent(Null), nullptr);
    FieldConnectorFactoryBase *const connectors = FieldConnectorFactoryBase::the();
    EXPECT_FALSE(connectors->connect(node, Null, node, "travMask"));
    EXPECT_FALSE(connectors->connect(node, "travMask", node, Null));
    EXPECT_FALSE(connectors->disconnect(node, Null, node, "travMask"));
}

TEST(NullText, ReadsAsNoValueOfAnyField)
{
    UnrecordedRefPtr<ManyFields> const fields(ManyFields::create());
    for(FieldDescriptionBase const *field : fields->getType().getFieldDescs())
    {
        EditFieldHandlePtr const handle = fields->editField(field->getFieldId());
        EXPECT_FALSE(handle->pushIndexedValueFromCString(Null, 0)) << field->getCName();
        EXPECT_FALSE(handle->insertIndexedValueFromCString(Null, 0)) << field->getCName();
    }
    NodePtr const node = make_group();
    EXPECT_FALSE(node->editField("volume")->pushIndexedValueFromCString(Null, 0));
}

TEST(NullText, IsWrittenAsNothing)
{
    std::ostringstream text;
    OutStream out(text);
    out << Null << "after";
    EXPECT_EQ(text.str(), "after");
}

TEST(NullText, NamesNoOperationParameterOrFile)
{
    EXPECT_FALSE(GraphOpFactoryBase::the()->create(Null));
    bool value = true;
    EXPECT_FALSE(GraphOpParamSet("a=1")(Null, value));
    EXPECT_TRUE(value);
    PathHandler paths;
    paths.pushBackPath(Null);
    paths.pushFrontPath(Null);
    paths.setBaseFile(Null);
    EXPECT_EQ(paths.findFile(Null), "");
}
} // namespace OSG::Test
