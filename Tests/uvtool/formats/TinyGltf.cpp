// The one place where the independent reader is compiled. Images are not its business here.
#define TINYGLTF_IMPLEMENTATION
#include <tiny_gltf.h>
