#include "OSGSceneDocument.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGGraphOpFactory.h"
#include "OSGImageFileHandler.h"
#include "OSGMemManager.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "OperationScenes.h"
#include "OsbScenes.h"
#include "TempFolder.h"

namespace OSG::Test
{
namespace
{
std::string const Models = TEST_SOURCE_DIR "/Models/";

/// Stops in the middle of a read until it is let go.
class HeldType : public SceneFileType
{
  public:
    static HeldType &the()
    {
        static HeldType *const type = new HeldType;
        return *type;
    }
    char const *getName() const override { return "held"; }
    TransitPtr<Node> read(std::istream &, char const *, Resolver) const override
    {
        NodePtr const scene = make_group();
        SceneFileHandlerBase::the()->updateReadProgress(UInt32(40));
        isThere = true;
        isThere.notify_all();
        isLetGo.wait(false);
        SceneFileHandlerBase::the()->updateReadProgress(UInt32(50));
        return TransitPtr<Node>(scene.get());
    }
    void letGo()
    {
        isLetGo = true;
        isLetGo.notify_all();
    }

    mutable std::atomic<bool> isThere = false;
    std::atomic<bool> isLetGo = false;

  private:
    static char const *suffixes[1];

    HeldType()
        : SceneFileType(suffixes, sizeof(suffixes), false, 0, ReadSupported)
    {
    }
};
char const *HeldType::suffixes[1] = {"held"};

/// Empties the root, and then fails as it was made to.
class FailingOp : public GraphOp
{
  public:
    enum class Way
    {
        GoesThrough,
        SaysSo,
        RaisesException,
        HasNoMemory
    };
    static UnrecordedRefPtr<FailingOp> create(Way way)
    {
        return UnrecordedRefPtr<FailingOp>(TransitPtr<FailingOp>(new FailingOp(way)));
    }
    TransitPtr<GraphOp> clone() override { return nullptr; }
    void setParams(std::string params) override { seenParams = params; }
    std::string usage() override { return ""; }
    bool traverse(Node *root) override
    {
        while(root->getNChildren() != 0)
            root->subChild(UInt32(0));
        if(_way == Way::RaisesException)
            throw std::runtime_error("no");
        if(_way == Way::HasNoMemory)
            throw std::bad_alloc();
        return _way != Way::SaysSo;
    }

    std::string seenParams;

  private:
    explicit FailingOp(Way way)
        : GraphOp("Failing")
        , _way(way)
    {
    }
    Way _way;
};
using Way = FailingOp::Way;

struct SceneDocumentTest : testing::Test
{
    SceneDocumentTest()
    {
        HeldType::the().isThere = false;
        HeldType::the().isLetGo = false;
    }
    /// Turns of a host, until the read has ended. Gives whether another scene is shown.
    bool finish()
    {
        bool isOther = false;
        while(document.isReading())
        {
            isOther = document.update(now) || isOther;
            std::this_thread::yield();
        }
        return isOther;
    }
    bool read(std::string const &file)
    {
        document.open(file);
        return finish();
    }
    /// As finish(), for looks at the file.
    bool turnFor(Real64 seconds)
    {
        bool isOther = document.update(now);
        for(Real64 const end = now + seconds; now < end;)
        {
            isOther = document.update(now += 0.25) || isOther;
            isOther = finish() || isOther;
        }
        return isOther;
    }
    std::string writeTriangles(int count)
    {
        std::string text;
        for(int i = 0; i < count; ++i)
            text += "usemtl part" + std::to_string(i) + "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf -1 -2 -3\n";
        return folder.write("a.obj", text);
    }

    TempFolder folder;
    LogCapture log;
    Real64 now = 5;
    SceneDocument document;
};

// --- opening ---

TEST_F(SceneDocumentTest, ShowsNothingAtFirst)
{
    EXPECT_FALSE(document.update(now));
    EXPECT_EQ(document.getScene(), nullptr);
    EXPECT_EQ(document.getFile(), "");
    EXPECT_EQ(document.takeMessage(), "");
    EXPECT_FALSE(document.isReading() || document.usesFiles() || document.needsSaving() ||
                 document.undo() || document.wasComplete());
}

TEST_F(SceneDocumentTest, ShowsAFileWhenItIsRead)
{
    document.open(Models + "pavilion.obj");
    EXPECT_TRUE(document.isReading());
    EXPECT_TRUE(document.usesFiles());
    EXPECT_EQ(document.getFileBeingRead(), Models + "pavilion.obj");
    EXPECT_EQ(document.getFile(), "");
    EXPECT_TRUE(finish());
    EXPECT_FALSE(document.update(now));
    EXPECT_EQ(document.getFile(), Models + "pavilion.obj");
    EXPECT_EQ(document.getFileBeingRead(), "");
    EXPECT_TRUE(document.wasComplete());
    EXPECT_GT(document.getHandOverSeconds(), 0);
    EXPECT_FALSE(document.needsSaving());
    EXPECT_EQ(document.takeMessage(), "");
    ASSERT_NE(document.getScene(), nullptr);
    EXPECT_TRUE(document.getScene()->getVolume().isValid());
}

TEST_F(SceneDocumentTest, ReadsTexturesThatLieBesideTheScene)
{
    ImageFileHandlerBase::the()->setPathHandler(nullptr);
    SceneDocument other;
    EXPECT_EQ(ImageFileHandlerBase::the()->getPathHandler(),
              SceneFileHandlerBase::the()->getPathHandler());
}

TEST_F(SceneDocumentTest, ABrokenFileLeavesTheSceneAndGivesOneLine)
{
    ASSERT_TRUE(read(Models + "pavilion.obj"));
    Node *const scene = document.getScene();
    UInt64 const stamp = document.getStamp();
    std::string const broken = folder.write("bro\nken.osb", "no");
    EXPECT_FALSE(read(broken));
    EXPECT_EQ(document.getScene(), scene);
    EXPECT_EQ(document.getStamp(), stamp);
    EXPECT_EQ(document.getFile(), Models + "pavilion.obj");
    EXPECT_EQ(document.takeMessage(),
              "cannot read " + folder.path("bro\\x0Aken.osb") + ": the file gives no scene");
    EXPECT_EQ(document.takeMessage(), "");
}

TEST_F(SceneDocumentTest, AFileThatEndsEarlyIsShownAndSaysSo)
{
    std::string const file = folder.write("cut.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\nv x\n");
    EXPECT_TRUE(read(file));
    EXPECT_FALSE(document.wasComplete());
    EXPECT_EQ(document.takeMessage(), file + " was not read completely");
}

TEST_F(SceneDocumentTest, AnotherFileCancelsTheReadWithoutWaitingForIt)
{
    document.open(folder.write("a.held", "x"));
    HeldType::the().isThere.wait(false);
    EXPECT_FLOAT_EQ(document.getProgress(), 0.4f);
    document.open(Models + "pavilion.obj"); // while the first stands still
    EXPECT_EQ(document.getProgress(), 0);
    EXPECT_FALSE(document.update(now));
    HeldType::the().letGo();
    EXPECT_TRUE(finish());
    EXPECT_EQ(document.getFile(), Models + "pavilion.obj");
    EXPECT_EQ(document.takeMessage(), "");
}

TEST_F(SceneDocumentTest, ACancelledReadLeavesTheSceneAndIsSilent)
{
    ASSERT_TRUE(read(Models + "pavilion.obj"));
    Node *const scene = document.getScene();
    document.open(folder.write("a.held", "x"));
    HeldType::the().isThere.wait(false);
    document.cancel();
    EXPECT_FALSE(document.isReading());
    EXPECT_TRUE(document.usesFiles()); // its thread still reads
    document.update(now);
    EXPECT_TRUE(document.usesFiles());
    HeldType::the().letGo();
    while(document.usesFiles())
        EXPECT_FALSE(document.update(now));
    EXPECT_EQ(document.getScene(), scene);
    EXPECT_EQ(document.takeMessage(), "");
}

TEST_F(SceneDocumentTest, AReadThatIsReadyButNotTakenMayStillBeCancelled)
{
    document.open(Models + "pavilion.obj");
    while(document.getProgress() < 1)
        std::this_thread::yield();
    document.cancel();
    EXPECT_FALSE(document.update(now));
    EXPECT_EQ(document.getScene(), nullptr);
}

TEST_F(SceneDocumentTest, TheSameFileIsReadAgain)
{
    ASSERT_TRUE(read(Models + "pavilion.obj"));
    UInt64 const stamp = document.getStamp();
    document.open(Models + "pavilion.obj");
    document.open(Models + "pavilion.obj"); // while it is read
    EXPECT_TRUE(finish());
    EXPECT_EQ(document.getStamp(), stamp + 1);
}

TEST_F(SceneDocumentTest, EndsWhileAFileIsRead)
{
    SceneDocument other;
    other.open(Models + "building.obj");
}

// --- the file on the disk ---

TEST_F(SceneDocumentTest, AFileThatHasChangedIsReadAgainIfTheHostWantsThat)
{
    ASSERT_TRUE(read(writeTriangles(1)));
    EXPECT_EQ(document.getScene()->getNChildren(), 0u);
    writeTriangles(2);
    EXPECT_FALSE(turnFor(3));
    document.setReloads(true);
    EXPECT_TRUE(turnFor(3));
    EXPECT_EQ(document.getScene()->getNChildren(), 2u);
    EXPECT_FALSE(turnFor(3));
}

TEST_F(SceneDocumentTest, AFileThatVanishesOrIsBrokenLeavesTheScene)
{
    document.setReloads(true);
    std::string const file = writeTriangles(1);
    ASSERT_TRUE(read(file));
    std::filesystem::remove(file);
    EXPECT_FALSE(turnFor(3));
    EXPECT_EQ(document.takeMessage(), "");
    folder.write("a.obj", "");
    EXPECT_FALSE(turnFor(3));
    EXPECT_EQ(document.takeMessage(), "cannot read " + file + ": the file gives no scene");
    EXPECT_FALSE(turnFor(3)); // it is not tried again
    EXPECT_EQ(document.takeMessage(), "");
    writeTriangles(3);
    EXPECT_TRUE(turnFor(3));
    EXPECT_EQ(document.getScene()->getNChildren(), 3u);
}

TEST_F(SceneDocumentTest, ASceneWithEditsOfItsOwnIsNotReplacedByItsFile)
{
    document.setReloads(true);
    std::string const file = writeTriangles(1);
    ASSERT_TRUE(read(file));
    document.setNeedsSaving();
    writeTriangles(2);
    EXPECT_FALSE(turnFor(3));
    EXPECT_EQ(document.takeMessage(), file + " has changed, and the scene has edits of its own");
    EXPECT_FALSE(turnFor(3));
    EXPECT_EQ(document.takeMessage(), "");
}

TEST_F(SceneDocumentTest, ASavedFileIsTheDocumentsAndIsNotReadAgain)
{
    document.setReloads(true);
    ASSERT_TRUE(read(writeTriangles(1)));
    document.setNeedsSaving();
    std::string const saved = folder.write("b.obj", "v 0 0 0\n");
    document.setSaved(saved);
    EXPECT_FALSE(document.needsSaving());
    EXPECT_EQ(document.getFile(), saved);
    EXPECT_FALSE(turnFor(3));
    folder.write("b.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_TRUE(turnFor(3));
}

// --- operations ---

TEST_F(SceneDocumentTest, AnOperationIsUndoneByTheCopyOfBefore)
{
    ASSERT_TRUE(read(writeTriangles(3)));
    std::string const before = osb_bytes(document.getScene());
    UInt64 const stamp = document.getStamp();
    auto const operation = FailingOp::create(Way::GoesThrough);
    std::optional<GraphOpAccount> const account = document.apply(*operation, "a=1");
    ASSERT_TRUE(account);
    EXPECT_EQ(account->removed, 3u);
    EXPECT_EQ(account->params, "a=1");
    EXPECT_EQ(operation->seenParams, "a=1");
    EXPECT_FALSE(Thread::getCurrentChangeList()->hasOpenEdits());
    EXPECT_EQ(document.getScene()->getNChildren(), 0u);
    EXPECT_EQ(document.getStamp(), stamp);
    EXPECT_TRUE(document.needsSaving());
    EXPECT_TRUE(document.undo());
    EXPECT_TRUE(document.update(now));
    EXPECT_EQ(osb_bytes(document.getScene()), before);
    EXPECT_FALSE(document.canUndo() || document.undo());
}

TEST_F(SceneDocumentTest, AnOperationThatFailsLeavesTheSceneAsItWas)
{
    ASSERT_TRUE(read(writeTriangles(3)));
    std::string const before = osb_bytes(document.getScene());
    EXPECT_FALSE(document.apply(*FailingOp::create(Way::SaysSo)));
    EXPECT_EQ(document.takeMessage(), "Failing did not go through");
    EXPECT_EQ(osb_bytes(document.getScene()), before);
    EXPECT_FALSE(document.apply(*FailingOp::create(Way::RaisesException)));
    EXPECT_EQ(document.takeMessage(), "Failing has raised an exception");
    EXPECT_EQ(osb_bytes(document.getScene()), before);
    EXPECT_THROW(document.apply(*FailingOp::create(Way::HasNoMemory)), std::bad_alloc);
    EXPECT_EQ(osb_bytes(document.getScene()), before);
    EXPECT_TRUE(document.update(now)); // the copy is shown
    EXPECT_FALSE(document.canUndo() || document.needsSaving());
}

TEST_F(SceneDocumentTest, WithoutMemoryForTheCopyTheSceneIsNotTouched)
{
    ASSERT_TRUE(read(writeTriangles(3)));
    std::string const before = osb_bytes(document.getScene());
    UInt64 const stamp = document.getStamp();
    set_mem_block_limit(2);
    EXPECT_THROW(document.apply(*FailingOp::create(Way::GoesThrough)), std::bad_alloc);
    set_mem_limit(0);
    EXPECT_EQ(document.getStamp(), stamp);
    EXPECT_EQ(osb_bytes(document.getScene()), before);
}

TEST_F(SceneDocumentTest, EachBlockMayBeMissingInAnOperationOfTheLibrary)
{
    NodePtr const levels = make_group({make_transform(translation(1, 0, 0), {make_triangle()}),
                                       make_group({make_group({make_triangle()})})});
    std::string const file = folder.path("levels.osb");
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(levels, file.c_str()));
    ASSERT_TRUE(read(file));
    std::string const before = osb_bytes(document.getScene());
    bool isDone = false;
    for(UInt64 blocks = 0; !isDone; ++blocks)
    {
        UnrecordedRefPtr<GraphOp> const operation(GraphOpFactoryBase::the()->create("Mrg"));
        set_mem_block_limit(blocks);
        try
        {
            isDone = document.apply(*operation).has_value();
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        if(!isDone)
        {
            ASSERT_EQ(osb_bytes(document.getScene()), before) << blocks;
        }
    }
    EXPECT_NE(osb_bytes(document.getScene()), before);
    EXPECT_TRUE(document.undo());
    EXPECT_EQ(osb_bytes(document.getScene()), before);
}

TEST_F(SceneDocumentTest, OnlyTheLastOperationsCanBeUndone)
{
    ASSERT_TRUE(read(writeTriangles(2)));
    for(int i = 0; i < 5; ++i)
        document.apply(*FailingOp::create(Way::GoesThrough));
    int undone = 0;
    while(document.undo())
        ++undone;
    EXPECT_EQ(undone, 3);
    document.setUndoDepth(0);
    ASSERT_TRUE(document.apply(*FailingOp::create(Way::GoesThrough)));
    EXPECT_FALSE(document.canUndo());
}

TEST_F(SceneDocumentTest, AnotherFileForgetsTheOperations)
{
    ASSERT_TRUE(read(writeTriangles(2)));
    document.apply(*FailingOp::create(Way::GoesThrough));
    ASSERT_TRUE(read(Models + "pavilion.obj"));
    EXPECT_FALSE(document.canUndo() || document.needsSaving());
}

TEST_F(SceneDocumentTest, WithoutASceneThereIsNothingToOperateOn)
{
    EXPECT_FALSE(document.apply(*FailingOp::create(Way::GoesThrough)));
    document.setNeedsSaving();
    EXPECT_FALSE(document.needsSaving() || document.canUndo());
}
} // namespace
} // namespace OSG::Test
