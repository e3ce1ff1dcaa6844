#pragma once

namespace uvtool
{

/// Makes sure that text can be painted: true when there is a QGuiApplication, or when one could be
/// made because there was no application of any kind. It is for the "offscreen" platform, stays
/// until the end of the process and leaves the locale as it was. Not safe from several threads.
bool startGuiSession();

} // namespace uvtool
