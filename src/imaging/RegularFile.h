#pragma once

#include <QByteArray>
#include <QString>

// Reads a whole file that must be a regular file (or a link to one) of at
// most `maxBytes`. Pipes, devices, sockets and folders are refused before
// they are opened, so nothing can block or stream without end; the read
// itself stops one byte past the limit. Returns the reason it could not,
// naming the file, or an empty string. `what` says what the file was meant
// to be ("file", "settings file").
QString readRegularFile(const QString& path, qint64 maxBytes, QByteArray& bytes, const QString& what = "file");
