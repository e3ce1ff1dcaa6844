#include "projection/SettingOptions.h"

namespace uvtool
{
namespace
{

using Planar = kyUVPlanarProjectionSettings;
using Cylindrical = kyUVCylindricalProjectionSettings;
using Triplanar = kyUVTriplanarProjectionSettings;

template <unsigned N>
osg::Vector<float, N> vectorOf(const std::vector<double>& numbers)
{
    osg::Vector<float, N> vector;
    for (unsigned i = 0; i < N; ++i)
        vector[i] = static_cast<float>(numbers[i]);
    return vector;
}

template <unsigned N>
std::vector<double> numbersOf(const osg::Vector<float, N>& vector)
{
    std::vector<double> numbers;
    for (unsigned i = 0; i < N; ++i)
        numbers.push_back(static_cast<double>(vector[i]));
    return numbers;
}

/// A property that is a vector. `Owner` is the class that declares it.
template <class Settings, class Owner, unsigned N>
SettingOption<Settings> vectorOption(const char* name, const char* parts, const char* help,
                                     SettingRange range,
                                     osg::Vector<float, N> (Owner::*get)() const,
                                     void (Owner::*set)(const osg::Vector<float, N>&))
{
    return {{name, parts, help, range, N},
            [set](Settings& settings, const std::vector<double>& numbers) {
                (settings.*set)(vectorOf<N>(numbers));
            },
            [get](const Settings& settings) { return numbersOf((settings.*get)()); }};
}

/// Two properties that are the size of the image.
template <class Settings, class Owner>
SettingOption<Settings> sizeOption(float (Owner::*width)() const, void (Owner::*setWidth)(float),
                                   float (Owner::*height)() const, void (Owner::*setHeight)(float))
{
    return {{"size", "W H", "Size of the image, in units of the scene", AboveZero, 2},
            [=](Settings& settings, const std::vector<double>& numbers) {
                (settings.*setWidth)(static_cast<float>(numbers[0]));
                (settings.*setHeight)(static_cast<float>(numbers[1]));
            },
            [=](const Settings& settings) {
                return std::vector<double>{static_cast<double>((settings.*width)()),
                                           static_cast<double>((settings.*height)())};
            }};
}

SettingOption<Cylindrical> numberOption(const char* name, const char* parts, const char* help,
                                        SettingRange range, double (Cylindrical::*get)() const,
                                        void (Cylindrical::*set)(double))
{
    return {{name, parts, help, range, 1},
            [set](Cylindrical& settings, const std::vector<double>& numbers) {
                (settings.*set)(numbers[0]);
            },
            [get](const Cylindrical& settings) { return std::vector<double>{(settings.*get)()}; }};
}

} // namespace

std::span<const SettingOption<Planar>> planarOptions()
{
    static const std::vector<SettingOption<Planar>> options{
        vectorOption<Planar>("center", "X Y Z", "Middle of the image, in the scene", AnyNumber,
                             &Planar::getProjectionCenter, &Planar::setProjectionCenter),
        vectorOption<Planar>("rotate", "PHI THETA RHO",
                             "Rotation in degrees: phi and theta place the normal of the plane,\n"
                             "rho turns the image on it",
                             AnyNumber, &Planar::getProjectionRotation,
                             &Planar::setProjectionRotation),
        sizeOption<Planar>(&Planar::getTextureWidth, &Planar::setTextureWidth,
                           &Planar::getTextureHeight, &Planar::setTextureHeight),
        vectorOption<Planar>("offset", "U V",
                             "Shift of the mesh across the image, in units of the scene", AnyNumber,
                             &Planar::getTextureOffset, &Planar::setTextureOffset),
        vectorOption<Planar>("scale", "U V", "Factors on the size", NotZero,
                             &Planar::getTextureScale, &Planar::setTextureScale)};
    return options;
}

std::span<const SettingOption<Cylindrical>> cylindricalOptions()
{
    static const std::vector<SettingOption<Cylindrical>> options{
        vectorOption<Cylindrical>("center", "X Y Z", "Middle of the cylinder, in the scene",
                                  AnyNumber, &Cylindrical::getProjectionCenter,
                                  &Cylindrical::setProjectionCenter),
        vectorOption<Cylindrical>("rotate", "X Y Z",
                                  "Rotation of the cylinder in degrees, about x first; its axis is "
                                  "y,\nand the middle of the image at +z, before it",
                                  AnyNumber, &Cylindrical::getProjectionRotation,
                                  &Cylindrical::setProjectionRotation),
        vectorOption<Cylindrical>(
            "scale", "RX H RZ", "Radius, height and radius of the cylinder, in units of the scene",
            NotZero, &Cylindrical::getProjectionScale, &Cylindrical::setProjectionScale),
        numberOption("angle", "DEG", "How far around the cylinder the image goes, in degrees",
                     NotZero, &Cylindrical::getProjectionUAngle, &Cylindrical::setProjectionUAngle),
        numberOption("turn", "DEG", "Rotation of the image on the cylinder, in degrees", AnyNumber,
                     &Cylindrical::getCylindricRotation2D, &Cylindrical::setCylindricRotation2D)};
    return options;
}

std::span<const SettingOption<Triplanar>> triplanarOptions()
{
    static const std::vector<SettingOption<Triplanar>> options{
        vectorOption<Triplanar>("center", "X Y Z", "Middle of the box, in the scene", AnyNumber,
                                &Triplanar::getCenter, &Triplanar::setCenter),
        vectorOption<Triplanar>("rotate", "X Y Z", "Rotation of the box in degrees, about x first",
                                AnyNumber, &Triplanar::getRotation3D, &Triplanar::setRotation3D),
        sizeOption<Triplanar>(&Triplanar::getWidth, &Triplanar::setWidth, &Triplanar::getHeight,
                              &Triplanar::setHeight),
        vectorOption<Triplanar>("repeat-u", "X Y Z",
                                "Repetitions of the image along u, for the sides along x, y and z",
                                NotZero, &Triplanar::getRepeatU, &Triplanar::setRepeatU),
        vectorOption<Triplanar>("repeat-v", "X Y Z", "The same along v", NotZero,
                                &Triplanar::getRepeatV, &Triplanar::setRepeatV),
        vectorOption<Triplanar>("offset-u", "X Y Z",
                                "Shift along u, in units of the scene, for the same sides",
                                AnyNumber, &Triplanar::getOffsetU, &Triplanar::setOffsetU),
        vectorOption<Triplanar>("offset-v", "X Y Z", "The same along v", AnyNumber,
                                &Triplanar::getOffsetV, &Triplanar::setOffsetV),
        vectorOption<Triplanar>("turn", "X Y Z",
                                "Rotation of the image in degrees, for the same sides", AnyNumber,
                                &Triplanar::getRotation2D, &Triplanar::setRotation2D)};
    return options;
}

} // namespace uvtool
