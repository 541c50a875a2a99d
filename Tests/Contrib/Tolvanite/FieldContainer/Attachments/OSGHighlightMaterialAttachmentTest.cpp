#include "OSGHighlightMaterialAttachment.h"

#include <gtest/gtest.h>

#include "OSGBinaryDataHandler.h"

namespace OSG
{
namespace
{
using HighlightPtr = UnrecordedRefPtr<HighlightMaterialAttachment>;
using MaterialPtr = UnrecordedRefPtr<ChunkMaterial>;

TEST(HighlightMaterialAttachment, ANewOneHasNoMaterial)
{
    HighlightPtr const highlight(HighlightMaterialAttachment::create());
    EXPECT_EQ(highlight->getMaterial(), nullptr);
}

TEST(HighlightMaterialAttachment, HoldsOneReferenceForAsLongAsItHasTheMaterial)
{
    MaterialPtr const material(ChunkMaterial::create());
    HighlightPtr highlight(HighlightMaterialAttachment::create());
    highlight->setMaterial(material);
    EXPECT_EQ(material->getRefCount(), 2);
    highlight->setMaterial(nullptr);
    EXPECT_EQ(material->getRefCount(), 1);
    highlight->setMaterial(material);
    highlight = nullptr;
    EXPECT_EQ(material->getRefCount(), 1);
}

TEST(HighlightMaterialAttachment, SettingWhatItHoldsTakesTheNewReferenceFirst)
{
    HighlightPtr const highlight(HighlightMaterialAttachment::create());
    {
        MaterialPtr const material(ChunkMaterial::create());
        highlight->setMaterial(material);
    }
    ChunkMaterial *const held = highlight->getMaterial();
    highlight->setMaterial(held);
    EXPECT_EQ(highlight->getMaterial(), held);
    EXPECT_EQ(held->getRefCount(), 1);
}

TEST(HighlightMaterialAttachment, ACopyHoldsTheMaterialToo)
{
    MaterialPtr const material(ChunkMaterial::create());
    HighlightPtr const highlight(HighlightMaterialAttachment::create());
    highlight->setMaterial(material);
    TransitPtr<FieldContainer> const copy = highlight->shallowCopy();
    EXPECT_EQ(dynamic_cast<HighlightMaterialAttachment &>(*copy).getMaterial(), material);
    EXPECT_EQ(material->getRefCount(), 3);
}

TEST(HighlightMaterialAttachment, ResolveLinksDropsTheMaterialAndMarksTheField)
{
    MaterialPtr const material(ChunkMaterial::create());
    HighlightPtr const highlight(HighlightMaterialAttachment::create());
    highlight->setMaterial(material);
    highlight->takeChangeMask();
    highlight->resolveLinks();
    EXPECT_EQ(highlight->getMaterial(), nullptr);
    EXPECT_EQ(material->getRefCount(), 1);
    EXPECT_EQ(highlight->getChangeMask(),
              BitVector(32 | AttachmentContainer::AttachmentsFieldMask));
}

TEST(HighlightMaterialAttachment, TheMaterialGoesOutAndInByItsId)
{
    MaterialPtr const material(ChunkMaterial::create());
    HighlightPtr const highlight(HighlightMaterialAttachment::create());
    highlight->setMaterial(material);
    BitVector const field = HighlightMaterialAttachment::MaterialFieldMask;
    MemoryBinaryDataHandler out;
    highlight->copyToBin(out, field);
    EXPECT_EQ(out.getBytes().size(), highlight->getBinSize(field) - highlight->getBinSize(0));

    HighlightPtr const other(HighlightMaterialAttachment::create());
    MemoryBinaryDataHandler in(out.getBytes());
    other->copyFromBin(in, field);
    EXPECT_EQ(other->getMaterial(), material);
    MemoryBinaryDataHandler null({0, 0, 0, 0});
    other->copyFromBin(null, field);
    EXPECT_EQ(other->getMaterial(), nullptr);
}
} // namespace
} // namespace OSG
