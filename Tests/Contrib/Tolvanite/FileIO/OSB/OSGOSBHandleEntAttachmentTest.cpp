#include "OSGOSBHandleEntAttachment.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGGeoToEntityAttachment.h"
#include "OSGOSBElementFactory.h"
#include "OSGSceneFileHandler.h"
#include "OsbScenes.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

std::vector<UInt8> bytes_of(OsbText const &text)
{
    return std::vector<UInt8>(text.bytes().begin(), text.bytes().end());
}

/// A record of the older layout behind its type name, read by the element that serves that name.
class OSBHandleEnt : public testing::Test
{
  protected:
    OsbText record = OsbText().u8(3).u16(0x0105);

    OsbText &numbers(char const *name, std::vector<UInt64> const &values)
    {
        record.field(name, "MFUInt32", 4 + 4 * values.size()).u32(values.size());
        for(UInt64 value : values)
            record.u32(value);
        return record;
    }
    UnrecordedRefPtr<GeoToEntityAttachment> read()
    {
        MemoryBinaryDataHandler in(bytes_of(record));
        OSBRootElement root(in);
        auto const element = OSBElementFactory::the()->createElement("GeoToEntAttachment", &root);
        element->read("GeoToEntAttachment");
        element->postRead();
        element->postMap();
        rest = in.getRest();
        return dynamic_cast<GeoToEntityAttachment *>(element->getContainer());
    }
    UInt64 rest = 0;
};

using Values = MField<UInt64>;

TEST_F(OSBHandleEnt, ServesTheOlderNameAlone)
{
    MemoryBinaryDataHandler none;
    OSBRootElement root(none);
    OSBElementFactory const &factory = *OSBElementFactorySingleton::the();
    auto const is_own = [&](char const *name)
    {
        auto const element = factory.createElement(name, &root);
        return dynamic_cast<OSBHandleEntAttachment *>(element.get()) != nullptr;
    };
    EXPECT_TRUE(is_own("GeoToEntAttachment"));
    EXPECT_FALSE(is_own("GeoToEntityAttachment"));
}

TEST_F(OSBHandleEnt, NumbersAreWidenedWithZeros)
{
    numbers("Geo", {3, 0xffffffff});
    numbers("Ent", {100, 0x80000000}).end();
    auto const table = read();
    EXPECT_EQ(table->getGeo(), (Values{3, 0xffffffff}));
    EXPECT_EQ(table->getEnt(), (Values{100, 0x80000000}));
    EXPECT_EQ(table->getEntFromIndex(2), 100u);
    EXPECT_EQ(rest, 0u);
}

TEST_F(OSBHandleEnt, ACountOfZeroLeavesTheFieldEmpty)
{
    numbers("Geo", {}).end();
    EXPECT_TRUE(read()->getGeo().empty());
}

TEST_F(OSBHandleEnt, ARecordWithoutFieldsGivesAnEmptyAttachment)
{
    record.end();
    auto const table = read();
    ASSERT_NE(table, nullptr);
    EXPECT_TRUE(table->getGeo().empty());
    EXPECT_TRUE(table->getEnt().empty());
}

TEST_F(OSBHandleEnt, AnUnknownFieldIsPassedOverAndReadingGoesOn)
{
    LogCapture log;
    numbers("geo", {9});
    numbers("Ent", {7}).end();
    auto const table = read();
    EXPECT_TRUE(table->getGeo().empty());
    EXPECT_EQ(table->getEnt(), Values{7});
    EXPECT_EQ(log.texts(LOG_WARNING),
              std::vector<std::string>{"OSB: GeoToEntityAttachment has no field geo of type "
                                       "MFUInt32, it is passed over\n"});
}

TEST_F(OSBHandleEnt, AFieldOfTheParentIsRead)
{
    record.field("internal", "SFBool", 1).u8(1);
    record.end();
    EXPECT_TRUE(read()->getInternal());
}

TEST_F(OSBHandleEnt, TwoFieldsOfOneNameAreJoined)
{
    numbers("Geo", {1, 2});
    numbers("Geo", {3}).end();
    EXPECT_EQ(read()->getGeo(), (Values{1, 2, 3}));
}

TEST_F(OSBHandleEnt, SizeAndTypeOfTheHeaderAreNotLookedAt)
{
    record.field("Geo", "anything", 12345).u32(1).u32(8).end();
    EXPECT_EQ(read()->getGeo(), Values{8});
}

TEST_F(OSBHandleEnt, AShortStreamRaisesTheHandlersErrorAtAnyByte)
{
    numbers("Geo", {3, 7});
    numbers("Ent", {100, 200}).end();
    OsbText const whole = record;
    for(std::size_t length = 0; length < whole.bytes().size(); ++length)
    {
        record = OsbText().raw(whole.bytes().data(), length);
        EXPECT_THROW(read(), ExceptionBinaryDataHandler::ReadError) << length;
    }
}

TEST_F(OSBHandleEnt, AWildCountTakesNoMemory)
{
    record.field("Geo", "MFUInt32", 8).u32(0xffffffff).u32(1);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    EXPECT_THROW(read(), ExceptionBinaryDataHandler::ReadError);
    EXPECT_LT(get_mem_peak_bytes() - before, 4u * 1024 * 1024);
}

TEST_F(OSBHandleEnt, WithoutAContainerWritingIsOneWarningAndNoByte)
{
    LogCapture log;
    MemoryBinaryDataHandler out;
    OSBRootElement root(out);
    OSBHandleEntAttachment element(&root);
    element.preWrite(nullptr);
    element.write();
    EXPECT_TRUE(out.getBytes().empty());
    EXPECT_EQ(
        log.texts(LOG_WARNING),
        std::vector<std::string>{"OSBHandleEntAttachment::write: Attempt to write nullptr.\n"});
}

TEST_F(OSBHandleEnt, WritingUsesTheLayoutOfTodayWithSixtyFourBits)
{
    UnrecordedRefPtr<GeoToEntityAttachment> const table(GeoToEntityAttachment::create());
    table->editGeo().push_back(UInt64(1) << 40);
    MemoryBinaryDataHandler out;
    OSBRootElement root(out);
    OSBHandleEntAttachment element(&root);
    element.preWrite(table);
    element.write();
    OsbText expected = OsbText().u8(3).u16(0x0200);
    expected.field("attachments", "MFUnrecAttachmentPtr", 4).u32(0);
    expected.field("internal", "SFBool", 1).u8(0);
    expected.field("Geo", "MFUInt64", 12).u32(1).u32(0).u32(1 << 8);
    expected.field("Ent", "MFUInt64", 4).u32(0).end();
    EXPECT_EQ(out.getBytes(), bytes_of(expected));
}

TEST_F(OSBHandleEnt, ASceneWithTheOlderNameIsReadWithIt)
{
    OsbText file = OsbText().signature().record("Node");
    file.field("attachments", "MFUnrecAttachmentPtr", 8).u32(1).u32(2).end();
    numbers("Geo", {5});
    numbers("Ent", {50}).end();
    file.typeName("GeoToEntAttachment").raw(record.bytes().data(), record.bytes().size()).end();
    NodePtr const node = osb_scene(file.bytes());
    ASSERT_NE(node, nullptr);
    auto *const table = dynamic_cast<GeoToEntityAttachment *>(
        node->findAttachment(GeoToEntityAttachment::getClassGroupId()));
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getEntFromIndex(4), 50u);
}
} // namespace
} // namespace OSG
