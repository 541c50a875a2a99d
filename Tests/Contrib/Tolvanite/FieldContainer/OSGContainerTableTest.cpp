#include "ContainerTable.h"

#include <fstream>
#include <sstream>

#include <boost/property_tree/xml_parser.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGAttachmentContainer.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldContainerType.h"
#include "OSGName.h"

namespace OSG
{
namespace
{
class ContainerTable : public testing::TestWithParam<OSG::Test::ContainerFacts>
{
  protected:
    OSG::Test::ContainerFacts const &facts = GetParam();
    FieldContainerType const &type = *FieldContainerFactoryBase::the()->findType(facts.name);
};

TEST_P(ContainerTable, TheTypeHasItsParentAndGroup)
{
    EXPECT_STREQ(type.getCParentName(), facts.parent);
    EXPECT_STREQ(type.getGroupName(), facts.group);
    EXPECT_FALSE(type.isAbstract());
    EXPECT_EQ(type.getDocumentation(), facts.prose);
}

TEST_P(ContainerTable, ItIsAnAttachmentContainerItself)
{
    EXPECT_TRUE(type.isDerivedFrom(AttachmentContainer::getClassType()));
    UnrecordedRefPtr<FieldContainer> const container(type.createContainer());
    auto *const named = dynamic_cast<AttachmentContainer *>(container.get());
    ASSERT_NE(named, nullptr);
    setName(named, "a name of its own");
    EXPECT_STREQ(getName(named), "a name of its own");
}

TEST_P(ContainerTable, TheFieldsHaveTheirIdsMasksTypesAndTexts)
{
    auto const &own = type.getOwnFieldDescs();
    ASSERT_EQ(own.size(), facts.fields.size());
    for(std::size_t i = 0; i < own.size(); ++i)
    {
        OSG::Test::FieldFacts const &expected = facts.fields[i];
        FieldDescriptionBase const &field = *own[i];
        EXPECT_STREQ(field.getCName(), expected.name);
        EXPECT_EQ(field.getFieldId(), expected.id);
        EXPECT_EQ(field.getFieldMask(), BitVector(1) << expected.id);
        EXPECT_STREQ(field.getFieldType().getContentType().getCName(), expected.type);
        EXPECT_EQ(field.getFieldType().getCardinality() == FieldCardinality::Multi, expected.multi);
        EXPECT_EQ(field.isInternal(), expected.internal);
        EXPECT_STREQ(field.getDocumentation(), expected.prose);
        EXPECT_EQ(field.getFlags(), 256u);
    }
}

TEST_P(ContainerTable, TheTypesAreMadePointerThenFieldsThenTheTypeItself)
{
    std::string const name = facts.name;
    std::vector<std::string> const expected = {name + "Ptr",
                                               "SFRec" + name + "Ptr",
                                               "SFUnrec" + name + "Ptr",
                                               "SFWeak" + name + "Ptr",
                                               "SFUnrefd" + name + "Ptr",
                                               "MFRec" + name + "Ptr",
                                               "MFUnrec" + name + "Ptr",
                                               "MFWeak" + name + "Ptr",
                                               "MFUnrefd" + name + "Ptr",
                                               name};
    TypeFactory const &types = TypeFactory::the();
    UInt32 id = type.getId() - 9;
    for(std::string const &one : expected)
        EXPECT_EQ(types.findType(id++)->getName(), one);
    EXPECT_EQ(types.findType(type.getId() - 9)->getCParentName(),
              std::string(facts.parent) + "Ptr");
    for(UInt32 back = 8; back >= 5; --back)
        EXPECT_STREQ(types.findType(type.getId() - back)->getCParentName(),
                     "FieldContainerPtrSFieldBase");
    for(UInt32 back = 4; back >= 1; --back)
        EXPECT_STREQ(types.findType(type.getId() - back)->getCParentName(),
                     "FieldContainerPtrMFieldBase");
}

TEST_P(ContainerTable, TheTypeCarriesTheDescriptionByteForByte)
{
    std::ifstream file(std::string(TEST_SOURCE_DIR "/Source/Contrib/Tolvanite/") + facts.folder +
                       "/OSG" + facts.name + ".xml");
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_EQ(type.getFcdXml(), text.str());
    char const *const header = std::string(facts.name) == "ConstSizeTransform"
                                   ? "<?xml version=\"1.0\" ?>\n"
                                   : "<?xml version=\"1.0\"?>\n";
    EXPECT_THAT(type.getFcdXml(), testing::StartsWith(header));
}

TEST_P(ContainerTable, TheDescriptionParsesAndNamesTheLibrary)
{
    std::istringstream text(type.getFcdXml());
    boost::property_tree::ptree tree;
    read_xml(text, tree);
    boost::property_tree::ptree const &attributes = tree.get_child("FieldContainer.<xmlattr>");
    std::vector<std::string> names;
    for(auto const &attribute : attributes)
        names.push_back(attribute.first);
    names.resize(7);
    EXPECT_EQ(names,
              (std::vector<std::string>{"name", "parent", "library", "pointerfieldtypes",
                                        "structure", "systemcomponent", "parentsystemcomponent"}));
    auto const value = [&attributes](char const *name)
    { return attributes.get<std::string>(name); };
    EXPECT_EQ(value("name"), facts.name);
    EXPECT_EQ(value("parent"), facts.parent);
    EXPECT_EQ(value("library"), "ContribTolvanite");
    EXPECT_EQ(value("pointerfieldtypes"), "both");
    EXPECT_EQ(value("structure"), "concrete");
    EXPECT_EQ(value("systemcomponent"), "true");
    EXPECT_EQ(value("parentsystemcomponent"), "true");
}

TEST_P(ContainerTable, DumpPrintsTheFixedMessageOnly)
{
    UnrecordedRefPtr<FieldContainer> const container(type.createContainer());
    OSG::Test::LogCapture log;
    container->dump(4, 7);
    EXPECT_EQ(log.texts(LOG_DUMP),
              std::vector<std::string>{std::string("Dump ") + facts.name + " NI\n"});
}

TEST_P(ContainerTable, IsMadeByName)
{
    UnrecordedRefPtr<FieldContainer> const container(
        FieldContainerFactoryBase::the()->createContainer(facts.name));
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(&container->getType(), &type);
    EXPECT_EQ(container->getRefCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Library, ContainerTable, testing::ValuesIn(OSG::Test::container_table()),
                         [](auto const &each) { return std::string(each.param.name); });
} // namespace
} // namespace OSG
