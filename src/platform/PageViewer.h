// The desktop's program for pages such as the help.
#pragma once

/// Whether it makes sense to ask the desktop to open an HTML page. False when it has an opener but
/// no program to open such a page with: the opener starts, finds none, and nobody is told.
bool HasPageViewer();
