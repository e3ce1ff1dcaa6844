#include "OpenSGExt/kyOpenSGExt.h"

namespace kyOpenSGExt
{

namespace
{

bool cameraIsZUp = false;

} // namespace

bool isCameraZUp()
{
    return cameraIsZUp;
}

void setCameraZUp(bool isZUp)
{
    cameraIsZUp = isZUp;
}

} // namespace kyOpenSGExt
