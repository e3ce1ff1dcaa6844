#pragma once

class CompactShellMesh;

/// While it lives, changes of the surfaces don't make a mesh dirty. When it ends, on whatever path,
/// they do again; the switch is no counter, so of two of them on one mesh the first to end turns it
/// back. Null is fine.
class QuietMesh
{
public:
    explicit QuietMesh(CompactShellMesh* mesh);
    ~QuietMesh();
    QuietMesh(const QuietMesh&) = delete;
    QuietMesh& operator=(const QuietMesh&) = delete;

private:
    CompactShellMesh* mesh_;
};
