#include "OSGSceneLoader.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGMemManager.h"
#include "OSGRenderAction.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "OsbScenes.h"
#include "TempFolder.h"

namespace OSG::Test
{
namespace
{
using State = SceneLoader::State;

std::string const Models = TEST_SOURCE_DIR "/Models/";
char const *const Files[] = {"pavilion.obj", "building.obj", "plant.osb"};

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

NodePtr read_directly(std::string const &file)
{
    return NodePtr(SceneFileHandlerBase::the()->read(file.c_str()));
}

/// Calls what a test gives it, on each percent of a read. Its scene is one node.
class SteppedType : public SceneFileType
{
  public:
    static SteppedType &the()
    {
        static SteppedType *const type = new SteppedType;
        return *type;
    }
    char const *getName() const override { return "stepped"; }
    TransitPtr<Node> read(std::istream &, char const *, Resolver) const override
    {
        NodePtr const scene = make_group();
        for(UInt32 percent = 1; percent <= 100; ++percent)
        {
            scene->addChild(make_group());
            step(percent);
            SceneFileHandlerBase::the()->updateReadProgress(percent);
        }
        commit();
        return TransitPtr<Node>(scene.get());
    }

    std::function<void(UInt32)> step;

  private:
    static char const *suffixes[1];

    SteppedType()
        : SceneFileType(suffixes, sizeof(suffixes), false, 0, ReadSupported)
    {
    }
};
char const *SteppedType::suffixes[1] = {"stepped"};

struct SceneLoaderTest : testing::Test
{
    TempFolder folder;
    LogCapture log; // of files that are not there
    std::string const stepped = folder.write("a.stepped", "x");

    SceneLoaderTest()
    {
        SteppedType::the().step = [](UInt32) {};
        // What is made once stays: readers, lists and tables.
        for(char const *file : Files)
        {
            SceneLoader loader(Models + file);
            loader.wait();
            NodePtr const scene(loader.take());
        }
        commit();
        log.clear();
    }

    /// Bytes that are left after the work, beside those before it. The ends of threads are in it.
    static Int64 bytesLeftBy(std::function<void()> const &work)
    {
        work(); // what is made once stays
        commit();
        UInt64 const before = get_mem_bytes();
        work();
        commit();
        return static_cast<Int64>(get_mem_bytes() - before);
    }
};

TEST_F(SceneLoaderTest, GivesTheSceneThatAReadGives)
{
    for(char const *file : Files)
    {
        SceneLoader loader(Models + file);
        loader.wait();
        EXPECT_EQ(loader.getState(), State::Ready) << file;
        EXPECT_EQ(loader.getProgress(), 1) << file;
        EXPECT_TRUE(loader.isComplete()) << file;
        NodePtr const scene(loader.take());
        ASSERT_NE(scene, nullptr) << file;
        EXPECT_EQ(loader.getState(), State::Taken) << file;
        EXPECT_GT(loader.getHandOverSeconds(), 0) << file;
        EXPECT_EQ(loader.take(), nullptr) << file;
        EXPECT_EQ(osb_bytes(scene), osb_bytes(read_directly(Models + file))) << file;
    }
}

TEST_F(SceneLoaderTest, ATakenSceneOutlivesTheLoaderAndIsTheHosts)
{
    NodePtr scene;
    {
        SceneLoader loader(Models + "pavilion.obj");
        loader.wait();
        scene = NodePtr(loader.take());
        EXPECT_FALSE(Thread::getCurrentChangeList()->hasOpenEdits());
    }
    NodePtr const direct = read_directly(Models + "pavilion.obj");
    scene->updateVolume();
    direct->updateVolume();
    EXPECT_EQ(scene->getVolume().getMin(), direct->getVolume().getMin());
    EXPECT_EQ(scene->getVolume().getMax(), direct->getVolume().getMax());
    scene->addChild(make_group());
    scene->subChild(UInt32(0));
    commit();
    EXPECT_EQ(scene->getNChildren(), direct->getNChildren());
}

TEST_F(SceneLoaderTest, AFileThatGivesNoSceneFailsWithAReason)
{
    std::string const files[] = {Models + "none.obj", folder.write("a.unknown", "x"),
                                 folder.write("damaged.osb", "no")};
    for(std::string const &file : files)
    {
        SceneLoader loader(file);
        loader.wait();
        EXPECT_EQ(loader.getState(), State::Failed) << file;
        EXPECT_EQ(loader.getError(), "the file gives no scene") << file;
        EXPECT_EQ(loader.take(), nullptr);
        loader.cancel();
        EXPECT_EQ(loader.getState(), State::Failed) << file;
    }
    EXPECT_EQ(log.messages().size(), 3u);
}

TEST_F(SceneLoaderTest, TheHostsAspectIsRefused)
{
    SceneLoader loader(Models + "pavilion.obj", Thread::getCurrentAspect());
    EXPECT_EQ(loader.getState(), State::Failed);
    EXPECT_EQ(loader.getError(), "the host works on the aspect of the loader");
}

// --- the end of reads, at every percent ---

TEST_F(SceneLoaderTest, CancelledAtAnyPercentItGivesNullAndLeavesNothing)
{
    auto const cancelAt = [this](UInt32 at)
    {
        std::atomic<bool> isThere = false;
        std::atomic<bool> mayGoOn = false;
        SteppedType::the().step = [&, at](UInt32 percent)
        {
            if(percent != at)
                return;
            isThere = true;
            isThere.notify_all();
            mayGoOn.wait(false);
        };
        SceneLoader loader(stepped);
        isThere.wait(false);
        EXPECT_EQ(loader.getState(), State::Running);
        EXPECT_EQ(loader.getProgress(), static_cast<Real32>(at - 1) / 100);
        loader.cancel();
        EXPECT_EQ(loader.getState(), State::Cancelled);
        EXPECT_EQ(loader.take(), nullptr);
        mayGoOn = true;
        mayGoOn.notify_all();
    };
    for(UInt32 percent = 1; percent <= 100; ++percent)
        EXPECT_EQ(bytesLeftBy([&] { cancelAt(percent); }), 0) << percent;
}

TEST_F(SceneLoaderTest, ReadersEndByAnExceptionOfTheProgressAndLeaveNothing)
{
    std::string files[] = {Models + "building.obj", folder.path("large.osb")};
    NodePtr scene = make_group();
    for(int i = 0; i < 20000; ++i)
        scene->addChild(make_group());
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(scene, files[1].c_str()));
    std::string text;
    for(int i = 0; i < 30000; ++i)
        text += "v 0 0 0\nv 1 0 0\nv 0 1 0\nf -1 -2 -3\n";
    files[0] = folder.write("large.obj", text);
    scene = nullptr;
    commit();
    SceneFileHandlerBase &handler = *SceneFileHandlerBase::the();
    for(std::string const &file : files)
    {
        UInt32 ended = 0;
        for(UInt32 at = 0; at <= 100; ++at)
        {
            EXPECT_EQ(bytesLeftBy(
                          [&]
                          {
                              handler.setReadProgressCallback(
                                  [at](UInt32 percent)
                                  {
                                      if(percent >= at)
                                          throw std::runtime_error("enough");
                                  });
                              try
                              {
                                  read_directly(file);
                              }
                              catch(std::runtime_error const &)
                              {
                                  ++ended;
                              }
                              handler.setReadProgressCallback({});
                          }),
                      0)
                << file << ", " << at;
        }
        EXPECT_GT(ended, 100u) << file;
    }
}

TEST_F(SceneLoaderTest, DestroyedAtAnyTimeItLeavesNothing)
{
    for(char const *file : Files)
    {
        for(int microseconds = 0; microseconds < 20000; microseconds += 1500)
        {
            EXPECT_EQ(bytesLeftBy(
                          [&]
                          {
                              SceneLoader const loader(Models + file);
                              std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
                          }),
                      0)
                << file << ", " << microseconds;
        }
    }
}

TEST_F(SceneLoaderTest, ReadyFailedAndTakenItLeavesNothing)
{
    EXPECT_EQ(bytesLeftBy(
                  [&]
                  {
                      SceneLoader const loader(Models + "pavilion.obj");
                      loader.wait();
                  }),
              0);
    EXPECT_EQ(bytesLeftBy(
                  [&]
                  {
                      SceneLoader loader(Models + "pavilion.obj");
                      loader.wait();
                      loader.cancel();
                      EXPECT_EQ(loader.getState(), State::Cancelled);
                      EXPECT_EQ(loader.take(), nullptr);
                  }),
              0);
    EXPECT_EQ(bytesLeftBy(
                  [&]
                  {
                      SceneLoader loader(Models + "pavilion.obj");
                      loader.wait();
                      NodePtr const scene(loader.take());
                      EXPECT_NE(scene, nullptr);
                  }),
              0);
}

TEST_F(SceneLoaderTest, TheHostsProgressIsHeardAgainAfterwards)
{
    UInt32 heard = 0;
    SceneFileHandlerBase &handler = *SceneFileHandlerBase::the();
    handler.setReadProgressCallback([&heard](UInt32) { ++heard; });
    {
        SceneLoader const loader(stepped);
        loader.wait();
    }
    EXPECT_EQ(heard, 0u);
    read_directly(stepped);
    handler.setReadProgressCallback({});
    EXPECT_EQ(heard, 101u);
}

// --- files that change ---

TEST_F(SceneLoaderTest, AFileThatVanishesOrIsCutWhileItIsReadIsHarmless)
{
    std::string text;
    for(int i = 0; i < 100000; ++i)
        text += "v 0 0 0\nv 1 0 0\nv 0 1 0\nf -1 -2 -3\n";
    for(bool const isCut : {false, true})
    {
        for(int microseconds = 0; microseconds < 30000; microseconds += 3000)
        {
            std::string const file = folder.write("large.obj", text);
            SceneLoader loader(file);
            std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
            if(isCut)
                std::filesystem::resize_file(file, 100);
            else
                std::filesystem::remove(file);
            loader.wait();
            NodePtr const scene(loader.take());
            EXPECT_EQ(scene != nullptr, loader.getState() == State::Taken);
            EXPECT_EQ(scene == nullptr, loader.getState() == State::Failed);
        }
    }
}

// --- several ---

TEST_F(SceneLoaderTest, LoadersWaitForOneAnother)
{
    std::atomic<bool> mayGoOn = false;
    SteppedType::the().step = [&](UInt32) { mayGoOn.wait(false); };
    SceneLoader first(stepped);
    SceneLoader second(Models + "pavilion.obj");
    SceneLoader third(Models + "pavilion.obj");
    third.cancel(); // while it waits
    EXPECT_EQ(third.getState(), State::Cancelled);
    EXPECT_EQ(second.getState(), State::Running);
    EXPECT_EQ(second.getProgress(), 0);
    mayGoOn = true;
    mayGoOn.notify_all();
    first.wait();
    NodePtr const one(first.take());
    second.wait();
    NodePtr const two(second.take());
    EXPECT_EQ(one->getNChildren(), 100u);
    EXPECT_NE(two, nullptr);
}

TEST_F(SceneLoaderTest, ReadInTheOrderInWhichTheyWereMade)
{
    for(int round = 0; round < 300; ++round)
    {
        SceneLoader first(stepped);
        SceneLoader second(stepped);
        while(first.getState() == State::Running)
        {
            ASSERT_EQ(second.getState(), State::Running) << round;
            std::this_thread::yield();
        }
        NodePtr const one(first.take());
        second.wait();
        EXPECT_EQ(second.getState(), State::Ready);
    }
}

TEST_F(SceneLoaderTest, AHandOverWithoutMemoryMayBeTriedAgain)
{
    SceneLoader loader(Models + "building.obj");
    loader.wait();
    UInt64 const before = get_mem_bytes();
    set_mem_limit(before + 4096);
    EXPECT_THROW(loader.take(), std::bad_alloc);
    set_mem_limit(0);
    EXPECT_EQ(loader.getState(), State::Ready);
    NodePtr const scene(loader.take());
    EXPECT_EQ(osb_bytes(scene), osb_bytes(read_directly(Models + "building.obj")));
}

TEST_F(SceneLoaderTest, TheHostEditsAndCollectsItsOwnSceneMeanwhile)
{
    NodePtr const root = make_group();
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    for(int i = 0; i < 5; ++i)
    {
        SceneLoader loader(Models + "building.obj");
        while(loader.getState() == State::Running)
        {
            NodePtr const child = make_transform(translation(1, 2, 3), {make_visit(root)});
            root->addChild(child);
            action->apply(root);
            root->subChild(child);
            commit();
            action->apply(root);
        }
        root->addChild(NodePtr(loader.take()));
        action->apply(root);
        commit();
    }
    EXPECT_EQ(root->getNChildren(), 5u);
}
} // namespace
} // namespace OSG::Test
