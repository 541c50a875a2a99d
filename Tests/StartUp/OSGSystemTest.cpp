#include "OSGSystem.h"

#include <thread>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "OSGFieldContainerFactory.h"
#include "OSGLog.h"
#include "OSGMemManager.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGSystemHooks.h"

// The system starts once in a process, so each of these tests lives in a process of its own.

namespace OSG
{
namespace
{
/// Ends the process with 0 if all calls of `expect` were true.
class Verdict
{
  public:
    void expect(bool condition, char const *what)
    {
        if(!condition)
            std::fprintf(stderr, "not so: %s\n", what);
        _good = _good && condition;
    }
    [[noreturn]] void leave() { std::exit(_good ? 0 : 1); }

  private:
    bool _good = true;
};

#define EXPECT_IN_ITS_OWN_PROCESS(body)                                                            \
    GTEST_FLAG_SET(death_test_style, "threadsafe");                                                \
    EXPECT_EXIT(                                                                                   \
        {                                                                                          \
            Verdict verdict;                                                                       \
            body verdict.leave();                                                                  \
        },                                                                                         \
        testing::ExitedWithCode(0), "")

#define SAY(condition) verdict.expect(condition, #condition)

std::string order; // what ran, a letter each

bool note(char letter)
{
    order += letter;
    return true;
}

/// Edits a node when it ends.
struct EditsAtItsEnd
{
    ~EditsAtItsEnd()
    {
        if(node == nullptr)
            return;
        node->setTravMask(7);
        node->addChild(UnrecordedRefPtr<Node>(Node::create()));
        if(count != nullptr)
            *count = node->getNChildren();
    }
    UnrecordedRefPtr<Node> node;
    UInt32 *count = nullptr;
};

TEST(System, AnotherThreadMayUseItFirst)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        std::thread([] { startUp(); }).join();
        static EditsAtItsEnd held;
        held.node = Node::create();
        for(int i = 0; i < 100; ++i)
            held.node->addChild(UnrecordedRefPtr<Node>(Node::create()));
        SAY(held.node->getNChildren() == 100);
    });
}

TEST(System, AnotherThreadMayStartAndEndIt)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        bool started = false;
        bool ended = false;
        std::thread([&started] { started = startUp(); }).join();
        SAY(UnrecordedRefPtr<Node>(Node::create()) != nullptr);
        std::thread([&ended] { ended = shutDown(); }).join();
        SAY(started && ended);
    });
}

/// Starts the system in a separate process with `blocks` blocks of memory. The result is 0 if the
/// system started, 1 if it was shut down again and nothing is left, and another number otherwise.
int start_with(UInt64 blocks)
{
    pid_t const child = fork();
    if(child == 0)
    {
        int result = 2;
        set_mem_block_limit(blocks);
        try
        {
            result = startUp() ? 0 : 3;
        }
        catch(std::bad_alloc const &)
        {
            set_mem_limit(0);
            bool const isDown = GlobalSystemState == SystemEnded;
            result = isDown && FieldContainerFactoryBase::the()->getNumContainers() == 0 ? 1 : 4;
        }
        _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(System, AStartWithoutMemoryIsTakenBack)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        UInt64 blocks = 0;
        int result = 1;
        for(; result == 1; ++blocks)
            result = start_with(blocks);
        SAY(result == 0);
        SAY(blocks > 100);
    });
}

TEST(System, OlderObjectsOfAThreadMayEditWhenTheyEnd)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(startUp());
        UInt32 childrenAtTheEnd = 0;
        UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
        std::thread(
            [&childrenAtTheEnd]
            {
                // Older than all that the thread has of the system.
                static thread_local EditsAtItsEnd held;
                held.count = &childrenAtTheEnd;
                held.node = Node::create();
            })
            .join();
        SAY(childrenAtTheEnd == 1);
        SAY(FieldContainerFactoryBase::the()->getNumContainers() == before);
    });
}

TEST(System, ThreadsThatComeAndGoLeaveNothing)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(startUp());
        auto const edit = []
        {
            UnrecordedRefPtr<Node> const node(Node::create());
            node->setTravMask(1);
        };
        std::thread(edit).join();
        UInt64 const before = get_mem_bytes();
        for(int i = 0; i < 5000; ++i) // more than there may be at once
            std::thread(edit).join();
        SAY(get_mem_bytes() == before);
    });
}

TEST(System, WhatAStaticHoldsEndsAfterTheThreadsObjects)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(startUp());
        static UnrecordedRefPtr<Node> held(Node::create());
        for(int i = 0; i < 100; ++i)
            held->addChild(UnrecordedRefPtr<Node>(Node::create()));
        // Edits that no commit has taken are open when it ends.
        SAY(held->getNChildren() == 100);
        verdict.leave();
    });
}

TEST(System, BeforeStartUpTypesAreKnownButHaveNoPrototype)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(GlobalSystemState == 0);
        SAY(Node::getClassType().getPrototype() == nullptr);
        SAY(!Node::create());
        SAY(TypeFactory::the().findType("Node") == &Node::getClassType());
    });
}

TEST(System, StartUpBringsPrototypesAndStateTwo)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(startUp());
        SAY(GlobalSystemState == 2);
        SAY(osgLogP != nullptr);
        SAY(Node::getClassType().getPrototype() != nullptr);
        SAY(bool(Node::create()));
        SAY(startUp());
    });
}

TEST(System, HooksRunInTheirPhasesAndInTheirOrder)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        addPostFactoryExitFunction([] { return note('e') && GlobalSystemState == 3; });
        addPreFactoryExitFunction([] { return note('d') && Node::getClassType().getPrototype(); });
        addPostFactoryInitFunction([] { return note('a') && Node::getClassType().getPrototype(); });
        addPostFactoryInitFunction(
            []
            {
                addPostFactoryInitFunction([] { return note('c'); });
                return note('b');
            });
        SAY(order.empty());
        startUp();
        SAY(order == "abc");
        shutDown();
        SAY(order == "abcde");
        SAY(GlobalSystemState == 4);
    });
}

TEST(System, AWrapperThatIsMadeWhileTheSystemIsUpRunsAtOnce)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        StaticInitFuncWrapper const early([] { return note('a'); });
        SAY(order.empty());
        startUp();
        SAY(order == "a");
        StaticInitFuncWrapper const late([] { return note('b'); });
        SAY(order == "ab");
    });
}

TEST(System, ShutDownEndsPrototypesAndDoesNotStartAgain)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        SAY(!shutDown());
        startUp();
        SAY(shutDown());
        SAY(Node::getClassType().getPrototype() == nullptr);
        SAY(!Node::create());
        SAY(FieldContainerFactoryBase::the()->getNumContainers() == 0);
        SAY(!startUp());
        SAY(!shutDown());
    });
}

TEST(System, WhatTheHostStillHoldsAfterShutDownPointsToNothing)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        startUp();
        {
            UnrecordedRefPtr<Node> const root(Node::create());
            root->addChild(UnrecordedRefPtr<Node>(Node::create()));
            setName(root, "root");
            shutDown();
            SAY(root->getNChildren() == 0);
            SAY(getName(root) == nullptr);
        }
        SAY(FieldContainerFactoryBase::the()->getNumContainers() == 0);
    });
}

TEST(System, MessagesAfterTheEndGoToStandardOutput)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        startUp();
        shutDown();
        testing::internal::CaptureStdout();
        OSG_LOG_WARNING("after %s\n", "all");
        SAY(testing::internal::GetCapturedStdout() == "after all\n");
    });
}

TEST(System, ALibraryThatIsLoadedLaterIsBroughtUpAtOnce)
{
    EXPECT_IN_ITS_OWN_PROCESS({
        startUp();
        SAY(FieldContainerFactoryBase::the()->findType("CommandNameAttachment") == nullptr);
        SAY(dlopen(EXTENSION_LIBRARY, RTLD_NOW | RTLD_GLOBAL) != nullptr);
        SAY(bool(FieldContainerFactoryBase::the()->createContainer("CommandNameAttachment")));
        SAY(bool(FieldContainerFactoryBase::the()->createContainer("Transform")));
        shutDown();
        SAY(FieldContainerFactoryBase::the()->getNumContainers() == 0);
    });
}
} // namespace
} // namespace OSG
