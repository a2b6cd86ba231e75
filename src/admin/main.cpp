// veskor-admin: site administration from the command line (see admin.h).
#include "admin/admin.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veskor-admin"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    return admin::runAdmin(QCoreApplication::arguments().mid(1), out, err);
}
