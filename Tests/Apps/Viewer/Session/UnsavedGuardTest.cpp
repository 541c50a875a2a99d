#include "UnsavedGuard.h"

#include <gtest/gtest.h>

#include "TempFolder.h"

using OSG::Test::TempFolder;

namespace
{
struct UnsavedGuardTest : testing::Test
{
    TempFolder folder;
    OSG::SceneDocument document;
    Viewer::UnsavedGuard guard{document};
    int acts = 0;

    void change()
    {
        document.open(folder.write("part.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"));
        while(!document.update(0))
            ASSERT_TRUE(document.isReading());
        document.setNeedsSaving();
    }
    void ask()
    {
        guard.before("it ends", [this] { ++acts; });
    }
};

TEST_F(UnsavedGuardTest, WithoutChangesItIsDoneAtOnce)
{
    ask();
    EXPECT_EQ(acts, 1);
    EXPECT_FALSE(guard.isAsking());
}

TEST_F(UnsavedGuardTest, WithChangesTheUserIsAskedFirst)
{
    change();
    ask();
    EXPECT_EQ(acts, 0);
    EXPECT_TRUE(guard.isAsking());
    EXPECT_EQ(guard.getWhat(), "it ends");
    guard.stay();
    EXPECT_FALSE(guard.isAsking());
    guard.discard();
    EXPECT_EQ(acts, 0);
    ask();
    guard.discard();
    EXPECT_EQ(acts, 1);
    EXPECT_FALSE(guard.isAsking());
}

TEST_F(UnsavedGuardTest, WhatIsDoneMayAskAgain)
{
    change();
    guard.before("one", [this] { ask(); });
    guard.discard();
    EXPECT_TRUE(guard.isAsking());
    EXPECT_EQ(guard.getWhat(), "it ends");
}
} // namespace
