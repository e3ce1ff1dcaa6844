#include "UVUtils/editing/kyUVLatticeToolState.h"

#include "UVUtils/model/kyUVUtils.h"

kyUVLatticeToolState::~kyUVLatticeToolState()
{
    for (auto& [node, metaData] : metaDataOfNode)
        kyUVUtils::destroyLatticeMetaData(metaData);
}
