#include "OSGPointerFieldHandles.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGManyFields.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGPointLight.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitchMaterial.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
template <class T>
UnrecordedRefPtr<T> make()
{
    return UnrecordedRefPtr<T>(T::create());
}

using Texts = std::vector<std::string>;
} // namespace

// --- sources ---

TEST(PointerFieldHandles, ABadSourceIsRefusedWithItsMessage)
{
    LogCapture log;
    auto const group = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    group->setMaterial(material);
    NodePtr const node = make_group();
    EditFieldHandlePtr const handle = group->editField("material");
    GetFieldHandlePtr const bad[] = {GetFieldHandlePtr(), node->getField("travMask"),
                                     node->getField("core"), node->getField("children")};
    for(GetFieldHandlePtr const &source : bad)
    {
        log.clear();
        EXPECT_FALSE(handle->shareValues(source));
        EXPECT_FALSE(handle->cloneValues(source));
        EXPECT_FALSE(handle->cloneValuesEx(source));
        EXPECT_EQ(log.texts(LOG_WARNING), (Texts{"shareValues illegal source for material\n",
                                                 "cloneValues illegal source for material\n",
                                                 "cloneValuesEx illegal source for material\n"}));
        EXPECT_EQ(group->getMaterial(), material);
    }
}

TEST(PointerFieldHandles, AChildFieldSharesNothing)
{
    LogCapture const log;
    NodePtr const from = make_group({make_group()});
    NodePtr const to = make_group();
    EXPECT_FALSE(to->editField("children")->shareValues(from->getField("children")));
    EXPECT_EQ(log.texts(), Texts{"shareValues illegal source for children\n"});
    EXPECT_EQ(from->getNChildren(), 1u);
}

TEST(PointerFieldHandles, ASourceOfADerivedClassIsLegalButNotTheOtherWayRound)
{
    LogCapture const log;
    auto const group = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    NodePtr const node = make_node(group);
    auto const many = make<ManyFields>();
    many->editMFManyPointer()->push_back(node);
    auto const choice = make<SwitchMaterial>();
    EXPECT_FALSE(choice->editField("materials")->shareValues(many->getField("manyPointer")));
    EXPECT_EQ(log.texts(), Texts{"shareValues illegal source for materials\n"});
}

TEST(PointerFieldHandles, ValueFieldsNeitherShareNorClone)
{
    auto const one = make<Name>();
    auto const two = make<Name>();
    two->setName("pump");
    EditFieldHandlePtr const handle = one->editField("name");
    EXPECT_FALSE(handle->shareValues(two->getField("name")));
    EXPECT_FALSE(handle->cloneValues(two->getField("name")));
    EXPECT_FALSE(handle->cloneValuesEx(two->getField("name")));
    EXPECT_FALSE(handle->copyValues(two->getField("internal")));
    EXPECT_FALSE(handle->copyValues(GetFieldHandlePtr()));
    EXPECT_EQ(one->getName(), "");
    EXPECT_TRUE(handle->copyValues(two->getField("name")));
    EXPECT_EQ(one->getName(), "pump");
}

TEST(PointerFieldHandles, PointerFieldsAreNotCopied)
{
    auto const one = make<MaterialGroup>();
    auto const two = make<MaterialGroup>();
    two->setMaterial(make<SimpleMaterial>());
    EXPECT_FALSE(one->editField("material")->copyValues(two->getField("material")));
    EXPECT_EQ(one->getMaterial(), nullptr);
}

// --- text ---

TEST(PointerFieldHandles, APointerIsTheIdOfItsContainer)
{
    auto const group = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    EditFieldHandlePtr const handle = group->editField("material");
    std::string const id = std::to_string(material->getId());
    EXPECT_TRUE(handle->pushIndexedValueFromCString(id.c_str(), 0));
    EXPECT_EQ(group->getMaterial(), material);
    for(std::string const &bad : {std::string("x"), std::string(""), std::string("4000000000"),
                                  std::to_string(group->getId())})
        EXPECT_FALSE(handle->pushIndexedValueFromCString(bad.c_str(), 0)) << bad;
    EXPECT_FALSE(handle->pushIndexedValueFromCString(id.c_str(), 1));
    EXPECT_FALSE(handle->insertIndexedValueFromCString(id.c_str(), 0));
    EXPECT_EQ(group->getMaterial(), material);
    EXPECT_TRUE(handle->pushIndexedValueFromCString("0", 0));
    EXPECT_EQ(group->getMaterial(), nullptr);
    EXPECT_EQ(material->getRefCount(), 1);
}

TEST(PointerFieldHandles, AnIdInAListIsReplacedOrAppended)
{
    auto const choice = make<SwitchMaterial>();
    auto const material = make<SimpleMaterial>();
    std::string const id = std::to_string(material->getId());
    EditFieldHandlePtr const handle = choice->editField("materials");
    EXPECT_TRUE(handle->insertIndexedValueFromCString("0", 0));
    EXPECT_TRUE(handle->insertIndexedValueFromCString(id.c_str(), 1));
    EXPECT_FALSE(handle->insertIndexedValueFromCString(id.c_str(), 1));
    EXPECT_TRUE(handle->pushIndexedValueFromCString(id.c_str(), 0));
    EXPECT_EQ(choice->getMaterials(0), material);
    EXPECT_EQ(choice->getMaterials(1), material);

    NodePtr const root = make_group();
    NodePtr const child = make_group();
    EditFieldHandlePtr const children = root->editField("children");
    std::string const childId = std::to_string(child->getId());
    EXPECT_TRUE(children->insertIndexedValueFromCString(childId.c_str(), 0));
    EXPECT_EQ(child->getParent(), root);
    EXPECT_FALSE(children->pushIndexedValueFromCString(childId.c_str(), 0));
}

TEST(PointerFieldHandles, WhatTheOwnerDoesNotTakeIsNotInserted)
{
    LogCapture const silence;
    NodePtr const leaf = make_group();
    NodePtr const root = make_group({leaf});
    EXPECT_FALSE(leaf->editField("children")
                     ->insertIndexedValueFromCString(std::to_string(root->getId()).c_str(), 0));
    EXPECT_EQ(leaf->getNChildren(), 0u);
    EXPECT_EQ(root->getParent(), nullptr);
    EXPECT_FALSE(root->editField("attachments")->insertIndexedValueFromCString("0", 0));
    EXPECT_TRUE(root->getMFAttachments()->empty());
    EXPECT_FALSE(leaf->editField("children")->insertIndexedValueFromCString("0", 0));
    EXPECT_EQ(leaf->getNChildren(), 0u);
}

// --- sharing ---

TEST(PointerFieldHandles, SharingPointsToTheSame)
{
    auto const one = make<MaterialGroup>();
    auto const two = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    two->setMaterial(material);
    EXPECT_TRUE(one->editField("material")->shareValues(two->getField("material")));
    EXPECT_EQ(one->getMaterial(), material);
    EXPECT_EQ(material->getRefCount(), 3);
    two->setMaterial(nullptr);
    EXPECT_TRUE(one->editField("material")->shareValues(two->getField("material")));
    EXPECT_EQ(one->getMaterial(), nullptr);
    EXPECT_EQ(material->getRefCount(), 1);
}

TEST(PointerFieldHandles, EveryPolicySharesWithEveryOther)
{
    NodePtr const nodes[] = {make_group(), make_group()};
    auto const source = make<ManyFields>();
    for(char const *from : {"Recorded", "Pointer", "Weak", "Unreferenced"})
    {
        auto const single = source->editField((std::string("one") + from).c_str());
        auto const multi = source->editField((std::string("many") + from).c_str());
        ASSERT_TRUE(single->add(nodes[0]));
        for(NodePtr const &node : nodes)
            ASSERT_TRUE(multi->add(node));
        for(char const *to : {"Recorded", "Pointer", "Weak", "Unreferenced"})
        {
            auto const target = make<ManyFields>();
            std::string const one = std::string("one") + to;
            std::string const many = std::string("many") + to;
            ASSERT_TRUE(target->editField(one.c_str())
                            ->shareValues(source->getField(single->getName().c_str())));
            ASSERT_TRUE(target->editField(many.c_str())
                            ->shareValues(source->getField(multi->getName().c_str())));
            EXPECT_EQ(target->getField(one.c_str())->getPointer(0), nodes[0]);
            ASSERT_EQ(target->getField(many.c_str())->size(), 2u);
            EXPECT_EQ(target->getField(many.c_str())->getPointer(1), nodes[1]);
        }
    }
}

TEST(PointerFieldHandles, AListIsReplacedAsAWhole)
{
    auto const one = make<SwitchMaterial>();
    auto const two = make<SwitchMaterial>();
    auto const old = make<SimpleMaterial>();
    auto const material = make<SimpleMaterial>();
    one->editMFMaterials()->push_back(old);
    one->editMFMaterials()->push_back(old);
    two->editMFMaterials()->push_back(nullptr);
    two->editMFMaterials()->push_back(material);
    EXPECT_TRUE(one->editField("materials")->shareValues(two->getField("materials")));
    EXPECT_TRUE(one->getField("materials")->equal(*two->getField("materials")));
    ASSERT_EQ(one->getMFMaterials()->size(), 2u);
    EXPECT_EQ(one->getMaterials(0), nullptr);
    EXPECT_EQ(one->getMaterials(1), material);
    EXPECT_EQ(old->getRefCount(), 1);
}

TEST(PointerFieldHandles, AFieldMayShareWithItself)
{
    auto const choice = make<SwitchMaterial>();
    choice->editMFMaterials()->push_back(make<SimpleMaterial>());
    Material *const material = choice->getMaterials(0);
    EXPECT_TRUE(choice->editField("materials")->shareValues(choice->getField("materials")));
    ASSERT_EQ(choice->getMFMaterials()->size(), 1u);
    EXPECT_EQ(choice->getMaterials(0), material);
    EXPECT_EQ(material->getRefCount(), 1);
}

TEST(PointerFieldHandles, WhatHangsTogetherIsLinkedByItsClasses)
{
    NodePtr const one = make_group();
    NodePtr const two = make_group();
    setName(two, "two");
    setName(one, "one");
    UnrecordedRefPtr<NodeCore> const old(one->getCore());
    EXPECT_TRUE(one->editField("core")->shareValues(two->getField("core")));
    EXPECT_EQ(one->getCore(), two->getCore());
    EXPECT_EQ(two->getCore()->getParents().size(), 2u);
    EXPECT_TRUE(old->getParents().empty());
    EXPECT_TRUE(one->editField("attachments")->shareValues(two->getField("attachments")));
    EXPECT_EQ(one->getMFAttachments()->size(), 1u);
    EXPECT_STREQ(getName(one), "two");
}

TEST(PointerFieldHandles, ChunksKeepTheirSlots)
{
    auto const one = make<ChunkMaterial>();
    auto const two = make<ChunkMaterial>();
    auto const first = make<MaterialChunk>();
    auto const second = make<MaterialChunk>();
    one->addChunk(make<MaterialChunk>());
    two->addChunk(first);
    two->addChunk(second);
    EXPECT_TRUE(one->editField("chunks")->shareValues(two->getField("chunks")));
    EXPECT_EQ(one->find(MaterialChunk::getClassType(), 0), first);
    EXPECT_EQ(one->find(MaterialChunk::getClassType(), 1), second);
    EXPECT_EQ(one->getMFChunks()->size(), 2u);
}

// --- cloning ---

TEST(PointerFieldHandles, CloningMakesClones)
{
    auto const one = make<MaterialGroup>();
    auto const two = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    material->setShininess(7.f);
    two->setMaterial(material);
    EXPECT_TRUE(one->editField("material")->cloneValues(two->getField("material")));
    ASSERT_NE(one->getMaterial(), nullptr);
    EXPECT_NE(one->getMaterial(), material);
    EXPECT_EQ(dynamic_cast<SimpleMaterial &>(*one->getMaterial()).getShininess(), 7.f);
    EXPECT_EQ(one->getMaterial()->getRefCount(), 1);
}

TEST(PointerFieldHandles, CloningSharesAndIgnoresByTypeGroupAndName)
{
    auto const one = make<MaterialGroup>();
    auto const two = make<MaterialGroup>();
    auto const material = make<SimpleMaterial>();
    two->setMaterial(material);
    EditFieldHandlePtr const handle = one->editField("material");
    GetFieldHandlePtr const source = two->getField("material");
    EXPECT_TRUE(handle->cloneValues(source, {&Material::getClassType()}));
    EXPECT_EQ(one->getMaterial(), material);
    EXPECT_TRUE(handle->cloneValues(source, {}, {&Material::getClassType()}));
    EXPECT_EQ(one->getMaterial(), nullptr);
    EXPECT_TRUE(handle->cloneValues(source, {}, {}, {SimpleMaterial::getClassGroupId()}));
    EXPECT_EQ(one->getMaterial(), material);
    EXPECT_TRUE(handle->cloneValuesEx(source, {}, {"Material"}));
    EXPECT_EQ(one->getMaterial(), nullptr);
    EXPECT_TRUE(handle->cloneValuesEx(source, {"SimpleMaterial"}));
    EXPECT_EQ(one->getMaterial(), material);
    EXPECT_TRUE(handle->cloneValuesEx(source));
    EXPECT_NE(one->getMaterial(), material);
}

TEST(PointerFieldHandles, ChildrenAreClonedIntoTheirNewParent)
{
    NodePtr const from = make_group({make_group({make_group()}), make_group()});
    NodePtr const to = make_group({make_group()});
    NodePtr const old(to->getChild(0));
    EXPECT_TRUE(to->editField("children")->cloneValues(from->getField("children")));
    ASSERT_EQ(to->getNChildren(), 2u);
    EXPECT_EQ(to->getChild(0)->getNChildren(), 1u);
    EXPECT_EQ(to->getChild(1)->getParent(), to);
    EXPECT_NE(to->getChild(0), from->getChild(0));
    EXPECT_EQ(from->getNChildren(), 2u);
    EXPECT_EQ(old->getParent(), nullptr);
}

TEST(PointerFieldHandles, IgnoredEntriesKeepTheirPlaceOnlyWhereNullIsAllowed)
{
    auto const material = make<SimpleMaterial>();
    auto const from = make<SwitchMaterial>();
    from->editMFMaterials()->push_back(material);
    from->editMFMaterials()->push_back(make<SwitchMaterial>());
    auto const to = make<SwitchMaterial>();
    EXPECT_TRUE(to->editField("materials")
                    ->cloneValuesEx(from->getField("materials"), {}, {"SimpleMaterial"}));
    ASSERT_EQ(to->getMFMaterials()->size(), 2u);
    EXPECT_EQ(to->getMaterials(0), nullptr);
    EXPECT_NE(to->getMaterials(1), nullptr);
    EXPECT_EQ(material->getRefCount(), 2);

    NodePtr const one = make_group();
    NodePtr const two = make_group();
    setName(two, "two");
    EXPECT_TRUE(
        one->editField("attachments")->cloneValuesEx(two->getField("attachments"), {}, {"Name"}));
    EXPECT_TRUE(one->getMFAttachments()->empty());
    EXPECT_STREQ(getName(two), "two");
}

// --- looking ---

TEST(PointerFieldHandles, AreReachedByTheClassesOfTheirFields)
{
    NodePtr const node = make_group({make_group()});
    GetFieldHandlePtr const core = node->getField("core");
    auto const *single = dynamic_cast<GetSFieldHandle<PointerSFieldBase> const *>(core.get());
    ASSERT_NE(single, nullptr);
    EXPECT_EQ(single->get(), node->getCore());
    GetFieldHandlePtr const children = node->getField("children");
    auto const *multi = dynamic_cast<GetMFieldHandle<PointerMFieldBase> const *>(children.get());
    ASSERT_NE(multi, nullptr);
    EXPECT_EQ((*multi)[0], node->getChild(0));
    EXPECT_EQ((*multi)[1], nullptr);
    EditFieldHandlePtr const edit = node->editField("children");
    auto const *edited = dynamic_cast<EditMFieldHandle<PointerMFieldBase> const *>(edit.get());
    ASSERT_NE(edited, nullptr);
    EXPECT_EQ((*edited)[0], node->getChild(0));
    EditFieldHandlePtr const editCore = node->editField("core");
    EXPECT_EQ(dynamic_cast<EditSFieldHandle<PointerSFieldBase> &>(*editCore).get(),
              node->getCore());
    EXPECT_EQ(
        dynamic_cast<EditSFieldHandle<PointerSFieldBase> *>(node->editField("travMask").get()),
        nullptr);
}

TEST(PointerFieldHandles, AreEqualWhereTheyPointToTheSame)
{
    auto const one = make<ManyFields>();
    auto const two = make<ManyFields>();
    {
        NodePtr const node = make_group();
        for(char const *name : {"oneRecorded", "onePointer", "oneWeak", "manyWeak", "manyPointer"})
        {
            EXPECT_TRUE(one->getField(name)->equal(*two->getField(name))) << name;
            one->editField(name)->add(node);
            EXPECT_FALSE(one->getField(name)->equal(*two->getField(name))) << name;
            two->editField(name)->add(node);
            EXPECT_TRUE(one->getField(name)->equal(*two->editField(name))) << name;
        }
        EXPECT_FALSE(one->getField("onePointer")->equal(*one->getField("oneWeak")));
        two->setOneWeak(nullptr);
        one->editMFManyPointer()->clear();
        one->setOnePointer(nullptr);
        one->setOneRecorded(nullptr);
        two->editMFManyPointer()->clear();
        two->setOnePointer(nullptr);
        two->setOneRecorded(nullptr);
    }
    // The node has died: looking at it is looking at nothing.
    EXPECT_TRUE(one->getField("oneWeak")->equal(*two->getField("oneWeak")));
}

// --- descriptions ---

TEST(FieldDescription, WithoutANameNoneIsMade)
{
    FieldType const &type = SField<UInt32>::getClassType();
    constexpr auto External = FieldDescriptionBase::Visibility::External;
    LogCapture log;
    for(char const *name : {static_cast<char const *>(nullptr), ""})
    {
        log.clear();
        EXPECT_EQ(FieldDescriptionBase::createFieldDescription(type, name, "", 9, 512, External,
                                                               256, nullptr, nullptr),
                  nullptr);
        EXPECT_EQ(FieldDescriptionBase::createFieldDescriptionIdx(type, name, "", 9, External, 256,
                                                                  nullptr, nullptr),
                  nullptr);
        EXPECT_EQ(log.texts(), (Texts{"createFieldDescription no fieldname given",
                                      "createFieldDescriptionIdx no fieldname given"}));
    }
    EXPECT_EQ(Name::getClassType().addInitialDesc(nullptr), 0u);

    std::unique_ptr<FieldDescriptionBase> const made(
        FieldDescriptionBase::createFieldDescriptionIdx(type, "size", "Prose.", 9, External, 256,
                                                        nullptr, nullptr));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getName(), "size");
    EXPECT_EQ(made->getFieldMask(), BitVector(512));
    EXPECT_FALSE(made->isInternal());
}
} // namespace OSG::Test
