// Makes a scene and saves it to the file that the command line names, if any. The suffix chooses
// the format.
#include <cstdio>

#include "OSGChangeList.h"
#include "OSGSceneFileHandler.h"
#include "OSGSystem.h"
#include "OSGThread.h"
#include "OSGTraverse.h"
#include "Plant.h"

namespace
{
unsigned count_nodes(OSG::Node *root)
{
    unsigned count = 0;
    OSG::traverse(root,
                  [&count](OSG::Node *)
                  {
                      ++count;
                      return OSG::ActionBase::Continue;
                  });
    return count;
}

int run(char const *fileName)
{
    OSG::UnrecordedRefPtr<OSG::Node> const plant = make_plant();
    OSG::Thread::getCurrentChangeList()->commitChanges();
    std::printf("a plant of %u nodes\n", count_nodes(plant));
    if(fileName == nullptr || OSG::SceneFileHandlerBase::the()->write(plant, fileName))
        return 0;
    std::fprintf(stderr, "plant: cannot write %s\n", fileName);
    return 1;
}
} // namespace

int main(int argc, char **argv)
{
    OSG::startUp();
    int const status = run(argc > 1 ? argv[1] : nullptr);
    OSG::shutDown();
    return status;
}
