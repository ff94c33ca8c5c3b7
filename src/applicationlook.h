#pragma once

/// Gives the running application the program's style, which is Fusion by name, and the icon of its windows.
void Set_Application_Look();
