#pragma once

namespace annotate {

/// Has a console, if there is one, take UTF-8 and the escape sequences that progress is shown with.
void prepareConsole();

/// Gives the console back the code page that it had. To be called at the end of the process, however it ends.
void restoreConsole();

} // namespace annotate
