#include "ModelPictures.h"

#include <algorithm>
#include <filesystem>
#include <string>

#include "OSGImage.h"
#include "OSGSceneFileHandler.h"

namespace OSG::Test
{
namespace
{
std::string file_of(ModelPicture const &picture)
{
    std::string const name = std::filesystem::path(picture.model).stem().string();
    return std::string(TEST_DATA_DIR) + "/Stored/" + name + ".png";
}

// Rows of images come from the bottom, those of pixels from the top.
void turn_rows(Pixels &pixels)
{
    for(UInt32 y = 0; y < pixels.height / 2; ++y)
        std::swap_ranges(pixels.at(0, y), pixels.at(0, y) + pixels.width * 3,
                         pixels.at(0, pixels.height - 1 - y));
}

ViewSetup view_at(Pnt3f const &from, Pnt3f const &at, Real32 fov, Real32 near, Real32 far)
{
    ViewSetup setup;
    setup.from = from;
    setup.at = at;
    setup.fov = fov;
    setup.near = near;
    setup.far = far;
    setup.width = 320;
    setup.height = 240;
    return setup;
}
} // namespace

std::vector<ModelPicture> const &model_pictures()
{
    static std::vector<ModelPicture> const pictures = {
        {"pavilion.obj", view_at({9, 6, 15}, {0, 1, 0}, 38, 1, 60)},
        {"building.obj", view_at({20, 14, 22}, {0, 2, 0}, 38, 1, 80)},
        {"plant.osb", view_at({24, 9, 18}, {10, 2, 0}, 40, 1, 80)},
    };
    return pictures;
}

NodePtr model_scene(ModelPicture const &picture)
{
    std::string const file = std::string(TEST_SOURCE_DIR) + "/Models/" + picture.model;
    return NodePtr(SceneFileHandlerBase::the()->read(file.c_str()));
}

Pixels stored_pixels(ModelPicture const &picture)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    if(!image->read(file_of(picture).c_str()) || image->getChannels() != 3)
        return {};
    Pixels pixels{image->getWidth(), image->getHeight(), {}};
    pixels.rgb.assign(image->getMFPixel()->begin(), image->getMFPixel()->end());
    turn_rows(pixels);
    return pixels;
}

bool store_pixels(ModelPicture const &picture, Pixels const &pixels)
{
    Pixels turned = pixels;
    turn_rows(turned);
    UnrecordedRefPtr<Image> const image(Image::create());
    image->set(turned.width, turned.height, 3, turned.rgb.data());
    return image->write(file_of(picture).c_str());
}
} // namespace OSG::Test
