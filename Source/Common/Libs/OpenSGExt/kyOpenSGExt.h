#pragma once

/// Settings of the application that its libraries follow.
namespace kyOpenSGExt
{

/// Which way is up for the camera: along z (true), or along y (false, as at the start).
bool isCameraZUp();
void setCameraZUp(bool isZUp);

} // namespace kyOpenSGExt
