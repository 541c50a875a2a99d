// A model in a widget of Qt:
//   qt-view FILE [PICTURE]
// B changes between orbiting and bands, F shows the whole model, S saves PICTURE (in the format of
// its suffix) and prints the addresses of the selected parts, Escape ends.
#include <QApplication>
#include <QShortcut>

#include <cstdio>

#include "OSGSceneFileHandler.h"
#include "OSGSystem.h"
#include "SceneWidget.h"

namespace
{
void add_key(SceneWidget &widget, QKeySequence const &key, std::function<void()> const &act)
{
    QObject::connect(new QShortcut(key, &widget), &QShortcut::activated, &widget, act);
}

int run(OSG::Node *scene, QString const &picture)
{
    SceneWidget widget(scene);
    bool isBand = false;
    add_key(widget, Qt::Key_B, [&] { widget.setBandMode(isBand = !isBand); });
    add_key(widget, Qt::Key_F, [&] { widget.fit(); });
    add_key(widget, Qt::Key_Escape, [] { QApplication::quit(); });
    add_key(widget, Qt::Key_S,
            [&]
            {
                std::fputs(widget.selectedParts().toUtf8().constData(), stdout);
                std::fflush(stdout);
                if(!picture.isEmpty() && !widget.grabFramebuffer().save(picture))
                    std::fprintf(stderr, "qt-view: cannot write the picture\n");
            });
    widget.setWindowTitle("qt-view");
    widget.resize(640, 480);
    widget.show();
    return QApplication::exec();
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if(argc < 2)
    {
        std::fprintf(stderr, "usage: qt-view FILE [PICTURE]\n");
        return 2;
    }
    OSG::startUp();
    int status = 1;
    {
        OSG::UnrecordedRefPtr<OSG::Node> const scene(
            OSG::SceneFileHandlerBase::the()->read(argv[1]));
        if(scene != nullptr)
            status = run(scene, argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString());
    }
    OSG::shutDown();
    return status;
}
