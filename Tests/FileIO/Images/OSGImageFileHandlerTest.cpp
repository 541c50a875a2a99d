#include "OSGImageFileHandler.h"

#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>

#include "GoneFolder.h"
#include "Pictures.h"

namespace OSG::Test
{
namespace
{
/// A file that is gone when the test ends.
class PictureFile
{
  public:
    PictureFile(std::string const &name, std::string const &bytes)
        : _path(testing::TempDir() + name)
    {
        std::ofstream(_path, std::ios::binary) << bytes;
    }
    PictureFile(PictureFile const &) = delete;
    PictureFile &operator=(PictureFile const &) = delete;
    ~PictureFile() { std::remove(_path.c_str()); }
    char const *path() const { return _path.c_str(); }

  private:
    std::string _path;
};

ImagePtr sample()
{
    RandomNumbers random(1);
    return random_picture(6, 5, 3, random);
}

TEST(ImageFileHandler, KnowsTheSuffixesInAnyCase)
{
    for(char const *suffix : {"png", "PNG", "jpg", "JPG", "jpeg", "jpe", "tga", "Tga", "bmp"})
        EXPECT_NE(ImageFileHandlerBase::the()->getFileType(suffix), nullptr) << suffix;
    EXPECT_EQ(ImageFileHandlerBase::the()->getFileType("gif"), nullptr);
    EXPECT_EQ(ImageFileHandlerBase::the()->getFileType(""), nullptr);
}

TEST(ImageFileHandler, ASuffixInCapitalsIsRead)
{
    PictureFile const file("Capitals.PNG", file_of(*sample(), "png"));
    ImagePtr const read(ImageFileHandlerBase::the()->read(file.path()));
    ASSERT_NE(read.get(), nullptr);
    EXPECT_TRUE(same_picture(*read, *sample()));
    EXPECT_EQ(read->getName(), file.path());
}

TEST(ImageFileHandler, WhereTheCurrentFolderIsGoneFilesOfFullNamesAreRead)
{
    TempFolder const folder;
    std::string const path = folder.write("a.png", file_of(*sample(), "png"));
    GoneFolder const gone(folder);
    ImagePtr const read(ImageFileHandlerBase::the()->read(path.c_str()));
    ASSERT_NE(read.get(), nullptr);
    EXPECT_EQ(read->getName(), path);
    EXPECT_EQ(ImageFileHandlerBase::the()->read("a.png"), nullptr);
}

TEST(ImageFileHandler, AWrongSuffixYieldsToTheContent)
{
    for(char const *content : {"png", "jpg", "tga", "bmp"})
    {
        for(char const *suffix : {"png", "jpg", "tga", "bmp", "none"})
        {
            PictureFile const file(std::string("lies.") + suffix, file_of(*sample(), content));
            ImagePtr const read(ImageFileHandlerBase::the()->read(file.path()));
            ASSERT_NE(read.get(), nullptr) << content << " in ." << suffix;
            EXPECT_EQ(read->getWidth(), 6u);
        }
    }
}

TEST(ImageFileHandler, WritesByTheSuffix)
{
    std::string const path = testing::TempDir() + "written.tga";
    ASSERT_TRUE(sample()->write(path.c_str()));
    ImagePtr const read(Image::create());
    EXPECT_TRUE(read->read(path.c_str()));
    EXPECT_TRUE(same_picture(*read, *sample()));
    std::remove(path.c_str());
}

TEST(ImageFileHandler, WritesNothingForAnUnknownSuffix)
{
    std::string const path = testing::TempDir() + "written.gif";
    EXPECT_FALSE(sample()->write(path.c_str()));
    EXPECT_FALSE(std::ifstream(path).good());
}

TEST(ImageFileHandler, FoldersDevicesAndMissingFilesAreNoPictures)
{
    EXPECT_EQ(ImageFileHandlerBase::the()->read("/dev/zero"), nullptr);
    EXPECT_EQ(ImageFileHandlerBase::the()->read(testing::TempDir().c_str()), nullptr);
    EXPECT_EQ(ImageFileHandlerBase::the()->read("no such file.png"), nullptr);
    EXPECT_EQ(ImageFileHandlerBase::the()->read(nullptr), nullptr);
}
} // namespace
} // namespace OSG::Test
