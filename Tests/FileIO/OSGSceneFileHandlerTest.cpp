#include "OSGSceneFileHandler.h"

#include <sstream>
#include <stdexcept>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "StreamBuffers.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
using Act = boost::function<void(std::istream &in)>;

/// A format whose scenes are one node, named after the type. Types live as long as the process, so
/// each is made once.
class NamedType : public SceneFileType
{
  public:
    NamedType(char const *name, std::vector<char const *> suffixes, bool override = false,
              UInt32 priority = 0, UInt32 flags = ReadSupported)
        : SceneFileType(suffixes.data(),
                        static_cast<UInt16>(suffixes.size() * sizeof(char const *)), override,
                        priority, flags)
        , _name(name)
    {
    }

    char const *getName() const override { return _name; }
    TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                          Resolver resolver) const override
    {
        lastName = fileNameOrExtension != nullptr ? fileNameOrExtension : "null";
        lastHadResolver = !resolver.empty();
        if(act)
            act(in);
        TransitPtr<Node> node = Node::create();
        setName(node.get(), _name);
        return node;
    }
    bool write(Node *, std::ostream &out, char const *fileNameOrExtension) const override
    {
        lastName = fileNameOrExtension != nullptr ? fileNameOrExtension : "null";
        out << "written by " << _name;
        return true;
    }

    mutable std::string lastName;
    mutable bool lastHadResolver = false;
    Act act; ///< called during the read

  private:
    char const *_name;
};

struct Types
{
    NamedType plain{"plain", {"one", "Two", nullptr}};
    NamedType later{"later", {"one"}};
    NamedType low{"low", {"three"}, true, 1};
    NamedType high{"high", {"three"}, true, 7};
    NamedType sameHigh{"same high", {"three"}, true, 7};
    NamedType noOverride{"no override", {"three"}, false, 100};
    NamedType zero{"zero", {"four"}, false, 100};
    NamedType overriding{"overriding", {"four"}, true, 0};
    NamedType writer{"writer", {"one", "out"}, true, 3, IOFileTypeBase::WriteSupported};
};

Types &types()
{
    static Types *const instance = new Types;
    return *instance;
}

SceneFileHandlerBase &handler()
{
    types();
    return *SceneFileHandlerBase::the();
}

std::string name_of(TransitPtr<Node> const &node) { return node ? getName(node.get()) : "null"; }

/// Reads by the plain type, whose reading does `act`.
class ActWhileReading
{
  public:
    explicit ActWhileReading(Act act) { types().plain.act = std::move(act); }
    ~ActWhileReading() { types().plain.act.clear(); }
};

struct Percents
{
    std::vector<UInt32> values;

    Percents()
    {
        handler().setReadProgressCallback([this](UInt32 percent) { values.push_back(percent); });
    }
    ~Percents() { handler().setReadProgressCallback({}); }
};

/// The number of elements after which the handler asks the stream for its place.
void read_elements()
{
    for(int i = 0; i < 4096; ++i)
        handler().updateReadProgress();
}

void skip(std::istream &in, std::streamsize bytes)
{
    in.ignore(bytes);
    read_elements();
}
} // namespace

TEST(SceneFileHandler, TheSingletonIsTheHandler)
{
    EXPECT_EQ(SingletonHolder<SceneFileHandlerBase>::the(), SceneFileHandlerBase::the());
}

// --- choice of a type ---

struct ChoiceCase
{
    char const *suffix;
    char const *name; ///< null for no type
};

TEST(SceneFileHandler, TheSuffixChoosesTheType)
{
    ChoiceCase const choices[] = {
        {"one", "plain"},  {"two", "plain"},       {"ONE", "plain"}, {"three", "high"},
        {"Three", "high"}, {"four", "overriding"}, {"out", "null"},  {"unknown", "null"},
        {"", "null"},      {"one.unknown", "null"}};
    for(ChoiceCase const &choice : choices)
    {
        SCOPED_TRACE(choice.suffix);
        SceneFileType *const type = handler().getFileType(choice.suffix);
        EXPECT_STREQ(type != nullptr ? type->getName() : "null", choice.name);
    }
    EXPECT_EQ(handler().getFileType(nullptr), nullptr);
}

TEST(SceneFileHandler, OnlyTypesWithTheWantedAbilitiesAreChosen)
{
    EXPECT_EQ(handler().getFileType("one", IOFileTypeBase::WriteSupported), &types().writer);
    EXPECT_EQ(handler().getFileType("one", IOFileTypeBase::ReadSupported), &types().plain);
    EXPECT_EQ(handler().getFileType("one",
                                    IOFileTypeBase::ReadSupported | IOFileTypeBase::WriteSupported),
              nullptr);
}

TEST(SceneFileHandler, ACopyOfATypeIsATypeOfItsOwn)
{
    static NamedType const *const copy = new NamedType(types().high);
    EXPECT_EQ(handler().getFileTypes().back(), copy);
    EXPECT_EQ(handler().getFileType("three"), &types().high);
}

// --- reading ---

TEST(SceneFileHandler, AStreamIsReadByTheTypeOfTheSuffix)
{
    std::istringstream in("x");
    EXPECT_EQ(name_of(handler().read(in, "One")), "plain");
    EXPECT_EQ(types().plain.lastName, "One");
    EXPECT_FALSE(types().plain.lastHadResolver);
}

TEST(SceneFileHandler, TheResolverReachesTheType)
{
    std::istringstream in("x");
    handler().read(in, "one",
                   [](std::string const &, FieldContainer const *, int)
                   { return static_cast<FieldContainer *>(nullptr); });
    EXPECT_TRUE(types().plain.lastHadResolver);
}

TEST(SceneFileHandler, AFileIsReadByTheTypeOfItsSuffix)
{
    TempFolder const folder;
    std::string const path = folder.write("a.unknown/model.v2.ONE", "x");
    std::string text;
    ActWhileReading const look([&text](std::istream &in) { in >> text; });
    EXPECT_EQ(name_of(handler().read(path.c_str())), "plain");
    EXPECT_EQ(types().plain.lastName, path);
    EXPECT_EQ(text, "x");
}

TEST(SceneFileHandler, AnEmptyFileIsTheTypesBusiness)
{
    TempFolder const folder;
    LogCapture log;
    EXPECT_EQ(name_of(handler().read(folder.write("empty.one", "").c_str())), "plain");
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(SceneFileHandler, WhatCannotBeReadGivesNullAndOneClearLine)
{
    TempFolder const folder;
    std::string const missing = folder.path("missing.one");
    std::string const directory = folder.makeFolder("folder.one");
    std::string const unknown = folder.write("model.unknown", "x");
    std::string const plain = folder.write("dir.one/model", "x");
    std::pair<std::string, std::string> const rows[] = {
        {missing, "Couldn't find the file '" + missing + "'!\n"},
        {directory, "'" + directory + "' is no regular file!\n"},
        {unknown, "No scene file type reads '" + unknown + "'!\n"},
        {plain, "No scene file type reads '" + plain + "'!\n"},
        {"", "No scene file type reads ''!\n"},
        {"/dev/zero.one", "Couldn't find the file '/dev/zero.one'!\n"}};
    for(auto const &[name, message] : rows)
    {
        LogCapture log;
        EXPECT_EQ(handler().read(name.c_str()), nullptr);
        EXPECT_THAT(log.texts(), ElementsAre(message));
    }
}

TEST(SceneFileHandler, AStreamOfUnknownSuffixGivesNullAndOneClearLine)
{
    std::istringstream in("x");
    for(char const *suffix : {"unknown", static_cast<char const *>(nullptr)})
    {
        LogCapture log;
        EXPECT_EQ(handler().read(in, suffix), nullptr);
        EXPECT_THAT(log.texts(), ElementsAre(std::string("No scene file type reads '") +
                                             (suffix != nullptr ? suffix : "") + "'!\n"));
    }
    EXPECT_EQ(in.tellg(), 0);
}

TEST(SceneFileHandler, NoNameGivesNull) { EXPECT_EQ(handler().read(nullptr), nullptr); }

// --- search path ---

TEST(SceneFileHandler, TheFilesOwnFolderComesFirstWhileItIsRead)
{
    TempFolder const folder;
    folder.write("a.mtl", "");
    std::string const own = folder.write("scene/a.mtl", "");
    folder.write("scene/model.one", "x");
    std::filesystem::path const former = std::filesystem::current_path();
    std::filesystem::current_path(folder.path(""));
    PathHandler &paths = *handler().getPathHandler();
    std::string found;
    ActWhileReading const look([&](std::istream &) { found = paths.findFile("a.mtl"); });
    EXPECT_EQ(name_of(handler().read("scene/model.one")), "plain");
    EXPECT_EQ(found, own);
    EXPECT_EQ(paths.findFile("a.mtl"), folder.path("a.mtl"));
    std::filesystem::current_path(former);
}

TEST(SceneFileHandler, FilesAreFoundOnTheSearchPath)
{
    TempFolder const folder;
    folder.write("list/model.one", "x");
    PathHandler own;
    PathHandler *const former = handler().getPathHandler();
    own.pushBackPath(folder.path("list").c_str());
    handler().setPathHandler(&own);
    EXPECT_EQ(name_of(handler().read("model.one")), "plain");
    EXPECT_EQ(types().plain.lastName, folder.path("list/model.one"));
    handler().setPathHandler(former);
}

TEST(SceneFileHandler, WithoutPathHandlerNamesStandAsTheyAre)
{
    TempFolder const folder;
    std::string const path = folder.write("model.one", "x");
    PathHandler *const former = handler().getPathHandler();
    handler().setPathHandler(nullptr);
    EXPECT_EQ(handler().getPathHandler(), nullptr);
    EXPECT_EQ(name_of(handler().read(path.c_str())), "plain");
    handler().setPathHandler(former);
}

// --- progress ---

TEST(SceneFileHandler, PercentsAreReportedOnceEachInAscendingOrder)
{
    std::istringstream in(repeated(1000, 'x'));
    ActWhileReading const look(
        [](std::istream &stream)
        {
            skip(stream, 100);
            skip(stream, 0);
            skip(stream, 5);
            skip(stream, 395);
            handler().updateReadProgress(30);
            handler().updateReadProgress(70);
            handler().updateReadProgress(1000);
        });
    Percents percents;
    handler().read(in, "one");
    EXPECT_THAT(percents.values, ElementsAre(0, 10, 50, 70, 100));
}

TEST(SceneFileHandler, ProgressCountsFromWhereTheStreamStands)
{
    std::istringstream in(repeated(1000, 'x'));
    in.seekg(500);
    ActWhileReading const look([](std::istream &stream) { skip(stream, 100); });
    Percents percents;
    handler().read(in, "one");
    EXPECT_THAT(percents.values, ElementsAre(0, 20));
}

TEST(SceneFileHandler, AStreamThatCannotSeekIsReadWithoutPercents)
{
    PieceBuffer buffer(repeated(1000, 'x'), {16, false, PieceBuffer::Never});
    std::istream in(&buffer);
    std::string text;
    ActWhileReading const look(
        [&text](std::istream &stream)
        {
            stream >> text;
            read_elements();
            handler().updateReadProgress(100);
        });
    Percents percents;
    EXPECT_EQ(name_of(handler().read(in, "one")), "plain");
    EXPECT_EQ(text.size(), 1000u);
    EXPECT_THAT(percents.values, ElementsAre(0, 100));
}

TEST(SceneFileHandler, OutsideOfAReadNothingIsReported)
{
    Percents percents;
    read_elements();
    handler().updateReadProgress(50);
    EXPECT_THAT(percents.values, IsEmpty());
}

TEST(SceneFileHandler, NestedReadsReportForThemselves)
{
    std::istringstream outer(repeated(1000, 'x'));
    bool inside = false;
    ActWhileReading const look(
        [&inside](std::istream &stream)
        {
            if(inside)
                return skip(stream, 25);
            inside = true;
            skip(stream, 600);
            std::istringstream inner(repeated(100, 'y'));
            handler().read(inner, "one");
            skip(stream, 100);
        });
    Percents percents;
    handler().read(outer, "one");
    EXPECT_THAT(percents.values, ElementsAre(0, 60, 0, 25, 70));
}

TEST(SceneFileHandler, WithoutACallbackReadingGoesOn)
{
    std::istringstream in("xyz");
    ActWhileReading const look([](std::istream &stream) { skip(stream, 1); });
    EXPECT_EQ(name_of(handler().read(in, "one")), "plain");
}

// --- faults ---

TEST(SceneFileHandler, AnExceptionOfATypePassesOutAndLeavesTheHandlerInOrder)
{
    TempFolder const folder;
    std::string const own = folder.write("scene/own.mtl", "");
    std::string const path = folder.write("scene/model.one", repeated(100, 'x'));
    Percents percents;
    {
        ActWhileReading const fail([](std::istream &) { throw std::runtime_error("no memory"); });
        EXPECT_THROW(handler().read(path.c_str()), std::runtime_error);
    }
    EXPECT_EQ(handler().getPathHandler()->findFile("own.mtl"), "");
    percents.values.clear();
    handler().updateReadProgress(50);
    EXPECT_THAT(percents.values, IsEmpty());
    EXPECT_EQ(name_of(handler().read(path.c_str())), "plain");
    EXPECT_THAT(percents.values, ElementsAre(0));
}

TEST(SceneFileHandler, AnExceptionOfTheCallbackPassesOutAndLeavesTheHandlerInOrder)
{
    std::istringstream in("x");
    handler().setReadProgressCallback([](UInt32) { throw std::runtime_error("enough"); });
    EXPECT_THROW(handler().read(in, "one"), std::runtime_error);
    Percents percents;
    handler().updateReadProgress(50);
    EXPECT_THAT(percents.values, IsEmpty());
}

// --- writing ---

TEST(SceneFileHandler, TheSuffixChoosesTheTypeThatWrites)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    std::ostringstream out;
    EXPECT_TRUE(handler().write(node, out, "OUT"));
    EXPECT_EQ(out.str(), "written by writer");

    TempFolder const folder;
    std::string const path = folder.path("model.out");
    EXPECT_TRUE(handler().write(node, path.c_str()));
    EXPECT_EQ(types().writer.lastName, path);
    std::ifstream in(path);
    std::string text;
    std::getline(in, text);
    EXPECT_EQ(text, "written by writer");
}

TEST(SceneFileHandler, WhatCannotBeWrittenGivesFalseAndOneClearLine)
{
    TempFolder const folder;
    UnrecordedRefPtr<Node> const node(Node::create());
    std::string const unknown = folder.path("model.three");
    std::string const nowhere = folder.path("missing/model.out");
    std::pair<std::string, std::string> const rows[] = {
        {unknown, "No scene file type writes '" + unknown + "'!\n"},
        {nowhere, "Couldn't open '" + nowhere + "' for writing!\n"}};
    for(auto const &[name, message] : rows)
    {
        LogCapture log;
        EXPECT_FALSE(handler().write(node, name.c_str()));
        EXPECT_THAT(log.texts(), ElementsAre(message));
    }
    EXPECT_FALSE(handler().write(node, nullptr));
    std::ostringstream out;
    LogCapture log;
    EXPECT_FALSE(handler().write(node, out, "three"));
    EXPECT_THAT(log.texts(), ElementsAre("No scene file type writes 'three'!\n"));
}

TEST(SceneFileHandler, ADiskThatIsFullGivesFalse)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    TempFolder const folder;
    std::string const full = folder.path("full.out");
    std::error_code error;
    std::filesystem::create_symlink("/dev/full", full, error);
    if(error || !std::filesystem::exists(std::filesystem::path("/dev/full"), error))
        GTEST_SKIP() << "this system has no /dev/full";
    EXPECT_FALSE(handler().write(node, full.c_str()));
}

// --- complete reads ---

TEST(SceneFileHandler, AReadIsCompleteUnlessItsTypeSaysOtherwise)
{
    std::istringstream in("x");
    handler().read(in, "one");
    EXPECT_TRUE(handler().wasLastReadComplete());
    {
        ActWhileReading const early([](std::istream &) { handler().setReadIncomplete(); });
        handler().read(in, "one");
        EXPECT_FALSE(handler().wasLastReadComplete());
    }
    handler().setReadIncomplete(); // of no read
    handler().read(in, "one");
    EXPECT_TRUE(handler().wasLastReadComplete());
}

TEST(SceneFileHandler, AReadThatGivesNothingOrRaisesIsNotComplete)
{
    LogCapture const log;
    std::istringstream in("x");
    handler().read(in, "one");
    handler().read("missing.one");
    EXPECT_FALSE(handler().wasLastReadComplete());
    handler().read(in, "one");
    handler().read(in, "unknown");
    EXPECT_FALSE(handler().wasLastReadComplete());
    handler().read(in, "one");
    ActWhileReading const raise([](std::istream &) { throw std::runtime_error("no"); });
    EXPECT_THROW(handler().read(in, "one"), std::runtime_error);
    EXPECT_FALSE(handler().wasLastReadComplete());
}

TEST(SceneFileHandler, AReadWithinAReadCountsWithIt)
{
    bool isInner = false;
    ActWhileReading const nested(
        [&isInner](std::istream &)
        {
            if(isInner)
                return handler().setReadIncomplete();
            isInner = true;
            std::istringstream other("y");
            handler().read(other, "one");
        });
    std::istringstream in("x");
    handler().read(in, "one");
    EXPECT_FALSE(handler().wasLastReadComplete());
}

TEST(SceneFileHandler, TellsTheLineOfTheInnermostText)
{
    EXPECT_EQ(handler().getReadLine(), 0u);
    std::istringstream outerIn("a\nb\n");
    std::istringstream innerIn("c\n");
    ReadBuffer outer(outerIn);
    ReadBuffer inner(innerIn);
    ReadText const outerText(outer);
    outer.ignoreLine();
    EXPECT_EQ(handler().getReadLine(), 2u);
    {
        ReadText const innerText(inner);
        EXPECT_EQ(handler().getReadLine(), 1u);
    }
    EXPECT_EQ(handler().getReadLine(), 2u);
}
