// The composition root: the only place that knows which implementation stands behind which port.

#include "app/CommandLineHelp.h"
#include "documents/ViewFactory.h"
#include "platform/hosts/HostConnection.h"
#include "platform/hosts/SampleAccount.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFonts.h"
#include "platform/qt/QtItemPicker.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtText.h"
#include "shell/CommandLine.h"
#include "shell/Program.h"
#include "shell/frmDocument.h"
#include "shell/frmMain.h"

#include <QApplication>

#include <cstdlib>

namespace {

using namespace nib;

class DocumentWindows final : public ViewFactory {
public:
    DocumentWindows(frmMain& mainWindow, Clipboard& clipboard) : mainWindow_(mainWindow), clipboard_(clipboard) {}
    std::unique_ptr<clsDocView> CreateView(mvDocument&) override
    {
        return std::make_unique<frmDocument>(mainWindow_, clipboard_);
    }

private:
    frmMain& mainWindow_;
    Clipboard& clipboard_;
};

std::vector<Text> Arguments(const QStringList& all)
{
    std::vector<Text> arguments;
    for (const QString& argument : all.mid(1)) arguments.push_back(FromQString(argument));
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    if (AnswersOnTerminal(argc, argv)) return EXIT_SUCCESS;

    QApplication::setApplicationName(QStringLiteral("nibpad71"));
    QApplication::setApplicationDisplayName(QStringLiteral("Nib"));
    QApplication::setApplicationVersion(QStringLiteral(NIB_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return EXIT_SUCCESS;
}
