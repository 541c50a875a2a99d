#include "OSGFieldHandle.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

#include "OSGFieldContainerFactory.h"
#include "OSGFieldText.h"
#include "OSGName.h"
#include "OSGNode.h"

namespace OSG
{
namespace
{
std::string text_of(GetFieldHandlePtr const &handle, UInt32 index = 0)
{
    std::ostringstream text;
    OutStream out(text);
    handle->pushIndexedValueToStream(out, index);
    return text.str();
}

TEST(FieldHandle, ReadsAndWritesAFieldByItsName)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    ASSERT_TRUE(name->editField("name")->pushIndexedValueFromCString("pump", 0));
    EXPECT_EQ(name->getName(), "pump");
    EXPECT_EQ(text_of(name->getField("name")), "pump");
    EXPECT_EQ(text_of(name->getField(Name::NameFieldId)), "pump");
}

TEST(FieldHandle, AFieldThatTheContainerHasNotGivesNull)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    EXPECT_FALSE(name->getField("nothing"));
    EXPECT_FALSE(name->editField(63u));
    EXPECT_EQ(name->getFieldDescription("nothing"), nullptr);
}

TEST(FieldHandle, MakingAnEditHandleMarksTheField)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    name->takeChangeMask();
    EditFieldHandlePtr const handle = name->editField(Name::NameFieldId);
    EXPECT_EQ(name->getChangeMask(), BitVector(Name::NameFieldMask));
}

TEST(FieldHandle, TextThatDoesNotReadLeavesTheValue)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    node->setTravMask(7);
    EXPECT_FALSE(node->editField("travMask")->pushIndexedValueFromCString("x", 0));
    EXPECT_FALSE(node->editField("travMask")->pushIndexedValueFromCString("1", 1));
    EXPECT_FALSE(node->editField("travMask")->insertIndexedValueFromCString("1", 0));
    EXPECT_FALSE(node->editField("travMask")->removeIndex(0));
    EXPECT_EQ(node->getTravMask(), 7u);
}

TEST(FieldHandle, KnowsPointerFieldsAndTheirSizes)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    node->addChild(UnrecordedRefPtr<Node>(Node::create()));
    GetFieldHandlePtr const children = node->getField("children");
    EXPECT_TRUE(children->isPointerField());
    EXPECT_EQ(children->size(), 1u);
    EXPECT_EQ(children->getPointer(0), node->getChild(0));
    EXPECT_EQ(children->getPointer(1), nullptr);
    EXPECT_FALSE(node->getField("travMask")->isPointerField());
}

TEST(FieldHandle, ChildrenAreTakenOutAsTheirParentWouldTakeThem)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    UnrecordedRefPtr<Node> const child(Node::create());
    node->addChild(child);
    EXPECT_TRUE(node->editField("children")->removeIndex(0));
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_EQ(child->getParent(), nullptr);
}

TEST(FieldHandle, WhatOnlyItsOwnerMayLinkIsRefused)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    EXPECT_FALSE(node->editField("children")->add(UnrecordedRefPtr<Node>(Node::create())));
    EXPECT_FALSE(node->editField("children")->add(node));
    EXPECT_FALSE(node->editField("attachments")->add(UnrecordedRefPtr<Name>(Name::create())));
    EXPECT_EQ(node->getNChildren(), 0u);
}

TEST(FieldHandle, FieldsAreEqualByTypeAndValue)
{
    UnrecordedRefPtr<Name> const one(Name::create());
    UnrecordedRefPtr<Name> const two(Name::create());
    one->setName("pump");
    two->setName("pump");
    EXPECT_TRUE(one->getField("name")->equal(*two->getField("name")));
    EXPECT_TRUE(one->getField("name")->equal(*two->editField("name")));
    two->setName("valve");
    EXPECT_FALSE(one->getField("name")->equal(*two->getField("name")));
    EXPECT_FALSE(one->getField("name")->equal(*one->getField("internal")));
}

TEST(FieldHandle, EveryFieldOfEveryTypeIsDescribedAndReachable)
{
    for(FieldContainerType *type : FieldContainerFactoryBase::the()->getTypes())
    {
        for(FieldDescriptionBase const *field : type->getOwnFieldDescs())
        {
            EXPECT_EQ(field->getFieldMask(), BitVector(1) << field->getFieldId());
            EXPECT_EQ(type->getFieldDesc(field->getFieldId()), field);
            EXPECT_EQ(field->getFlags(), 256u);
            EXPECT_STRNE(field->getDocumentation(), "") << type->getName() << field->getName();
            if(type->getPrototype() != nullptr)
            {
                GetFieldHandlePtr const handle =
                    type->getPrototype()->getField(field->getFieldId());
                ASSERT_TRUE(handle);
                EXPECT_TRUE(handle->isValid());
                EXPECT_EQ(handle->getName(), field->getName());
                EXPECT_EQ(handle->getContainer(), type->getPrototype());
            }
        }
    }
}

TEST(FieldText, NumbersReadBackExactly)
{
    Matrix matrix;
    matrix[3][0] = 0.1f;
    std::ostringstream text;
    OutStream out(text);
    value_to_text(out, matrix);
    Matrix back;
    back[0][0] = 7.f;
    ASSERT_TRUE(value_from_text(text.str().c_str(), back));
    EXPECT_TRUE(back.equals(matrix, 0.f));
}

TEST(FieldText, AcceptsLiteralsAsDescriptionsWriteThem)
{
    Real32 number = 0.f;
    EXPECT_TRUE(value_from_text("1.0f", number));
    EXPECT_EQ(number, 1.f);
    Pnt3f point;
    EXPECT_TRUE(value_from_text("1, 2, 3", point));
    EXPECT_EQ(point, Pnt3f(1.f, 2.f, 3.f));
    EXPECT_FALSE(value_from_text("1, 2", point));
    EXPECT_FALSE(value_from_text("1, 2, 3, 4", point));
    bool flag = false;
    EXPECT_TRUE(value_from_text("true", flag));
    EXPECT_TRUE(flag);
    UInt8 byte = 3;
    EXPECT_FALSE(value_from_text("256", byte));
    EXPECT_EQ(byte, 3);
}

// --- every value type, out and in ---

template <class T>
std::string written(T const &value)
{
    std::ostringstream text;
    OutStream out(text);
    value_to_text(out, value);
    return text.str();
}

/// What a text reads to, over a value that is not the default.
template <class T>
T read_back(std::string const &text, T value)
{
    EXPECT_TRUE(value_from_text(text.c_str(), value)) << text;
    return value;
}

BoxVolume box_with(void (*change)(BoxVolume &))
{
    BoxVolume box(Pnt3f(-1.f, 0.1f, 2.f), Pnt3f(1e-20f, 1e20f, 3.f));
    change(box);
    return box;
}

TEST(FieldText, EveryTypeReadsBackFromWhatItWrites)
{
    constexpr Real32 odd = 0.1f;
    EXPECT_EQ(read_back(written(std::string("a, \"b\"\n")), std::string("x")), "a, \"b\"\n");
    EXPECT_EQ(read_back(written(std::string()), std::string("x")), "");
    EXPECT_EQ(read_back(written(true), false), true);
    EXPECT_EQ(read_back(written(false), true), false);
    EXPECT_EQ(read_back(written(UInt8(255)), UInt8(0)), 255);
    EXPECT_EQ(read_back(written(UInt16(65535)), UInt16(0)), 65535);
    EXPECT_EQ(read_back(written(UInt32(0xFFFFFFFF)), UInt32(0)), 0xFFFFFFFF);
    EXPECT_EQ(read_back(written(~UInt64(0)), UInt64(0)), ~UInt64(0));
    EXPECT_EQ(read_back(written(Int32(-2147483647 - 1)), Int32(0)), -2147483647 - 1);
    EXPECT_EQ(read_back(written(odd), 0.f), odd);
    EXPECT_EQ(read_back(written(Pnt3f(odd, -2.f, 3e30f)), Pnt3f()), Pnt3f(odd, -2.f, 3e30f));
    EXPECT_EQ(read_back(written(Vec2f(odd, -2.f)), Vec2f()), Vec2f(odd, -2.f));
    EXPECT_EQ(read_back(written(Vec3f(odd, -2.f, 0.f)), Vec3f()), Vec3f(odd, -2.f, 0.f));
    EXPECT_EQ(read_back(written(Color3f(odd, 0.f, 1.f)), Color3f()), Color3f(odd, 0.f, 1.f));
    EXPECT_EQ(read_back(written(Color4f(odd, 0.f, 1.f, 0.5f)), Color4f()),
              Color4f(odd, 0.f, 1.f, 0.5f));
}

TEST(FieldText, NumbersThatAreNoneReadBack)
{
    Real32 const infinity = std::numeric_limits<Real32>::infinity();
    EXPECT_EQ(read_back(written(infinity), 0.f), infinity);
    EXPECT_EQ(read_back(written(-infinity), 0.f), -infinity);
    EXPECT_TRUE(std::isnan(read_back(written(std::nanf("")), 0.f)));
}

TEST(FieldText, BoxesReadBackWithWhatTheyAre)
{
    for(BoxVolume const &box :
        {box_with([](BoxVolume &) {}), box_with([](BoxVolume &b) { b.setEmpty(); }),
         box_with([](BoxVolume &b) { b.setInfinite(); }),
         box_with([](BoxVolume &b) { b.setValid(false); }),
         box_with(
             [](BoxVolume &b)
             {
                 b.setStatic();
                 b.setValid(false);
                 b.setEmpty();
             }),
         BoxVolume()})
    {
        BoxVolume other(Pnt3f(7.f, 7.f, 7.f), Pnt3f(8.f, 8.f, 8.f));
        other.setStatic();
        EXPECT_TRUE(read_back(written(box), other) == box) << written(box);
    }
    BoxVolume box;
    EXPECT_TRUE(value_from_text("infinite", box));
    EXPECT_TRUE(box.isInfinite());
    EXPECT_FALSE(value_from_text("", box));
    EXPECT_FALSE(value_from_text("static 1 2 3", box));
    EXPECT_TRUE(box.isInfinite());
}
} // namespace
} // namespace OSG
