#include "Unfold3D/contract/CRef.h"

#include "Unfold3D/contract/CVal.h"

namespace NU3D
{

CRef::CRef(VALTYPES, VALPROPS) : value_(std::make_shared<CVal>(CVal::Table{})) {}
CRef::CRef(bool value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(int value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(float value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(double value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(const char* value, VALPROPS) : value_(std::make_shared<CVal>(std::string(value))) {}
CRef::CRef(const std::string& value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(std::vector<int> value, VALPROPS) : value_(std::make_shared<CVal>(std::move(value))) {}
CRef::CRef(std::vector<double> value, VALPROPS) : value_(std::make_shared<CVal>(std::move(value)))
{}
CRef::CRef(const CBox2D& value, VALPROPS) : value_(std::make_shared<CVal>(value)) {}
CRef::CRef(std::shared_ptr<CVal> value) : value_(std::move(value)) {}

} // namespace NU3D
