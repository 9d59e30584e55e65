#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

// bellavenor-cli run to its end: exit status and what it printed.
struct CliRun {
    int status = -1;
    QByteArray out, err;
};

inline CliRun runCli(const QStringList& arguments,
                     const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(BELLAVENOR_CLI, arguments);
    process.waitForFinished(120000);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
