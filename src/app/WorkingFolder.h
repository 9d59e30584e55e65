#pragma once

#include <QString>

// The folder rendered pictures are written to before they are moved or
// shared: "Bellavenro" (the program's own spelling) in the Documents folder.
QString workingFolderPath(const QString& documentsFolder);

// Makes sure something exists at `path`, creating the folder and its parents
// when nothing does. Anything already there, even a plain file, counts as
// present. False only when the folder could not be created.
bool ensureWorkingFolder(const QString& path);
