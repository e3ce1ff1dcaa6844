#include "OpenSGAnim/kyAnimManager.h"

#include "OpenSG/Attachment.h"
#include "OpenSG/ChangeNotice.h"
#include "OpenSG/ConcreteContainer.h"

namespace
{

/// On a node: its vertices are animated.
class AnimAttachment final : public osg::ConcreteContainer<AnimAttachment, osg::Attachment>
{
public:
    static osg::FieldContainerType& getClassType()
    {
        static auto& type = *new osg::FieldContainerType(
            "AnimAttachment", &osg::Attachment::getClassType(), &createContainer, {});
        return type;
    }

private:
    friend osg::ConcreteContainer<AnimAttachment, osg::Attachment>;
    AnimAttachment() = default;
    AnimAttachment(const AnimAttachment&) = default;
};

} // namespace

kyAnimManager* kyAnimManager::the()
{
    // Leaked on purpose, as all that outlives main.
    static auto* theOne = new kyAnimManager;
    return theOne;
}

bool kyAnimManager::hasVertexAnimation(const osg::NodePtr& node) const
{
    return node && node->findAttachment(AnimAttachment::getClassType());
}

void kyAnimManager::setVertexAnimation(const osg::NodePtr& node, bool isAnimated)
{
    if (!node || hasVertexAnimation(node) == isAnimated)
        return;
    if (isAnimated)
        node->addAttachment(AnimAttachment::create());
    else
        node->subAttachment(node->findAttachment(AnimAttachment::getClassType()));
    osg::notifyChanged(node, osg::Node::AttachmentsFieldMask);
}
