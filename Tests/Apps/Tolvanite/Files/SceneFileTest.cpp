// What is said where a reader raises an exception.

#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "LogLines.h"
#include "OSGSceneFileType.h"
#include "SceneFile.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
/// Raises what the first letter of a file asks for.
class RaisingType : public OSG::SceneFileType
{
  public:
    static void add()
    {
        static RaisingType const *const type = new RaisingType;
        (void)type;
    }

    OSG::TransitPtr<OSG::Node> read(std::istream &in, char const *, Resolver) const override
    {
        if(in.get() == 'm')
            throw std::bad_alloc();
        throw std::runtime_error("the wheel\x1b is broken");
    }
    char const *getName() const override { return "Exceptions of the tests"; }

  private:
    RaisingType()
        : SceneFileType(suffixes(), sizeof(char const *), false, 0, ReadSupported)
    {
    }
    static char const **suffixes()
    {
        static char const *list[1] = {"raising"};
        return list;
    }
};

class ReadScene : public testing::Test
{
  protected:
    ReadScene() { RaisingType::add(); }

    Scene read(std::string const &content)
    {
        SceneOptions options;
        options.file = folder.write("a.raising", content);
        LogLines lines(err, LogLines::Show::Lines);
        return read_scene(options, {out, err, &lines});
    }

    OSG::Test::TempFolder folder;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(ReadScene, AnExceptionMeansThatThereIsNoSceneAndItsReasonIsShown)
{
    EXPECT_EQ(read("other").root, nullptr);
    EXPECT_EQ(err.str(), "WARNING: the wheel\\x1B is broken\ntolvanite: cannot read " +
                             folder.path("a.raising") + "\n");
    EXPECT_EQ(out.str(), "");
}

TEST_F(ReadScene, MemoryThatIsNotThereIsNoMatterOfTheFile)
{
    EXPECT_THROW(read("memory"), std::bad_alloc);
}
} // namespace
} // namespace Tool::Test
