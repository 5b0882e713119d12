// Paths written in the program as its first platform wrote them ("c:\cadenart")
// and where they are on this one. A drive letter is a folder of that letter,
// in lower case, inside the program's folder (App.Path): "c:\cadenart" is
// App.Path/c/cadenart. Backslashes are folder separators. A path with no drive
// letter is left as it is, backslashes turned into slashes.
#pragma once
#include <QString>

namespace vb {

QString NativePath(const QString& path);

} // namespace vb
