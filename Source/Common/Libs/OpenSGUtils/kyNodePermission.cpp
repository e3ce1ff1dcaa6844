#include "OpenSGUtils/kyNodePermission.h"

#include "OpenSG/Attachment.h"
#include "OpenSG/ChangeNotice.h"
#include "OpenSG/ConcreteContainer.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

using Actions = std::vector<unsigned int>;

/// The actions that are denied on a node, ascending.
class DeniedActions final : public osg::ConcreteContainer<DeniedActions, osg::Attachment>
{
public:
    static constexpr osg::FieldMask ActionsFieldMask =
        osg::FieldMask::bit(osg::Attachment::NextFieldNumber);

    static osg::FieldContainerType& getClassType()
    {
        static auto& type = *new osg::FieldContainerType(
            "DeniedActions", &osg::Attachment::getClassType(), &createContainer,
            {osg::valueField<&DeniedActions::actions>("actions", "MFUInt32", ActionsFieldMask)});
        return type;
    }

    Actions actions;

private:
    friend osg::ConcreteContainer<DeniedActions, osg::Attachment>;
    DeniedActions() = default;
    DeniedActions(const DeniedActions&) = default;
};

Actions deniedActions(const osg::NodePtr& node)
{
    const auto attachment =
        osg::dcast<DeniedActions>(node->findAttachment(DeniedActions::getClassType()));
    return attachment ? attachment->actions : Actions();
}

/// Always in a new attachment: the present one may hang on copies of the node too.
void setDeniedActions(const osg::NodePtr& node, Actions actions)
{
    node->subAttachment(node->findAttachment(DeniedActions::getClassType()));
    if (!actions.empty()) {
        const auto attachment = DeniedActions::create();
        attachment->actions = std::move(actions);
        node->addAttachment(attachment);
    }
    osg::notifyChanged(node, osg::Node::AttachmentsFieldMask);
}

} // namespace

namespace kyNodePermission
{

bool allows(const osg::NodePtr& node, unsigned int action)
{
    if (!node)
        return false;
    const Actions denied = deniedActions(node);
    return !std::binary_search(denied.begin(), denied.end(), action);
}

void deny(const osg::NodePtr& node, unsigned int action)
{
    if (!allows(node, action))
        return;
    Actions denied = deniedActions(node);
    denied.insert(std::lower_bound(denied.begin(), denied.end(), action), action);
    setDeniedActions(node, std::move(denied));
}

void allow(const osg::NodePtr& node, unsigned int action)
{
    if (!node || allows(node, action))
        return;
    Actions denied = deniedActions(node);
    std::erase(denied, action);
    setDeniedActions(node, std::move(denied));
}

} // namespace kyNodePermission
