// inicheck: started by the client when an administrator has asked every client
// to leave the database (forceshutdown.ini says TRUE). It waits until the file
// says so no more, then starts the client beside it again with the arguments
// it was given, and ends.
//
// The database folder comes from veskor.ini beside this program, as the client
// reads it: section and key "DataPath", this program's folder when shorter than
// two characters.
#include "platform/profile.h"
#include "start/startup.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

namespace {

// Between two looks at the file: the administrator's repair takes minutes.
constexpr unsigned long kLookIntervalSeconds = 3;

QString databaseFolder(const QString& programFolder)
{
    QString dataPath = platform::GetPrivateProfileString(QStringLiteral("DataPath"), QStringLiteral("DataPath"),
                                                         QString(), 200, programFolder + QStringLiteral("veskor.ini"));
    if (dataPath.size() < 2) {
        dataPath = programFolder;
    }
    return withClosingSeparator(dataPath);
}

bool shutDownRequested(const QString& shutDownFile)
{
    return platform::GetPrivateProfileString(QStringLiteral("ForceShutDown"), QStringLiteral("ForceShutDown"),
                                             QString(), 200, shutDownFile)
               .toUpper() == QLatin1String("TRUE");
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QString programFolder = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    const QString shutDownFile = databaseFolder(programFolder) + QStringLiteral("forceshutdown.ini");
    while (shutDownRequested(shutDownFile)) {
        QThread::sleep(kLookIntervalSeconds);
    }
    const bool started =
        QProcess::startDetached(programFolder + QStringLiteral("user"), QCoreApplication::arguments().mid(1));
    return started ? 0 : 1;
}
