// SPDX-License-Identifier: MIT
#pragma once

namespace vexagpx {

/// Finds the middle of some places on the earth, wherever they are: across the 180th meridian or around a pole, too.
class PlaceBox {
public:
    /// \param latitude, longitude in degrees, finite
    void Add(double latitude, double longitude);

    bool IsEmpty() const { return isEmpty_; }

    /// In degrees. Zero for places all around the earth.
    void Middle(double& latitude, double& longitude) const;

private:
    struct Range {
        double low = 0.0;
        double high = 0.0;

        void Add(double value, bool isFirst);
    };

    // Of the places as directions from the centre of the earth.
    Range x_;
    Range y_;
    Range z_;
    bool isEmpty_ = true;
};

/// Lambert's azimuthal equal-area projection of a sphere as large as the earth. It looks right at every latitude, and has no
/// edge but the place opposite its middle.
class PageProjection {
public:
    /// \param latitude, longitude the middle of the map in degrees
    PageProjection(double latitude, double longitude);

    /// Metres from the middle of the map towards the right and downwards, where the north is above the middle.
    void Project(double latitude, double longitude, double& x, double& y) const;

private:
    double sine_;
    double cosine_;
    double longitude_;
};

} // namespace vexagpx
