#include "OpenSGUtils/UVConstraintData.h"

#include "OpenSG/TinyGeometry.h"
#include "OpenSGExt/UVConstraintAttachment.h"

#include <gtest/gtest.h>

using Record = std::vector<UVConstraintData>;

namespace
{

osg::UVConstraintAttachmentPtr attachmentOf(const osg::GeometryPtr& geometry)
{
    return osg::dcast<osg::UVConstraintAttachment>(
        geometry->findAttachment(osg::UVConstraintAttachmentBase::_type));
}

TEST(UVConstraints, ComeBackAsTheyWereSet)
{
    const auto geometry = tiny::quad();
    EXPECT_EQ(getUVConstraints(geometry), Record{UVConstraintData()});
    for (const UVConstraintData& data :
         {UVConstraintData{{0, 1, 2, 3}, {1, 2}}, UVConstraintData{{}, {0, 3}},
          UVConstraintData{{0, 1}, {}}})
    {
        setUVConstraints(geometry, {data});
        EXPECT_EQ(getUVConstraints(geometry), Record{data});
        setUVConstraints(geometry, {});
        EXPECT_EQ(getUVConstraints(geometry), Record{data}) << "an empty record says nothing";
    }
    setUVConstraints(geometry, {UVConstraintData()});
    EXPECT_EQ(attachmentOf(geometry), osg::NullFC) << "without constraints, no attachment";

    setUVConstraints(osg::NullFC, {UVConstraintData{{0, 1}, {}}});
    EXPECT_EQ(getUVConstraints(osg::NullFC), Record());
}

TEST(UVConstraints, AreToldOnTheListThenTheAttachment)
{
    const auto geometry = tiny::quad();
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    setUVConstraints(geometry, {UVConstraintData{{0, 1}, {2, 3}}});
    const std::vector<tiny::NoticeJournal::Notice> attached{
        {geometry->getId(), osg::Geometry::AttachmentsFieldMask, 1}};
    EXPECT_EQ(std::exchange(journal.notices, {}), attached);

    const osg::RefPtr<osg::UVConstraintAttachment> attachment(attachmentOf(geometry));
    osg::FieldMask maskV;
    const osg::GeoIndicesPtr listV = attachment->getEdgesField(1, maskV);
    EXPECT_EQ(listV, attachment->getEdgesV());
    EXPECT_EQ(maskV, osg::UVConstraintAttachment::EdgesVFieldMask);
    journal.watch(listV);
    journal.watch(attachment);
    setUVConstraints(geometry, {UVConstraintData()});
    EXPECT_EQ(journal.notices,
              (std::vector<tiny::NoticeJournal::Notice>{
                  {attachment->getId(), osg::UVConstraintAttachment::EdgesUFieldMask, 1},
                  {listV->getId(), osg::FieldMask::all(), 1},
                  {attachment->getId(), maskV, 1},
                  attached.front()}));
}

} // namespace
