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

} // namespace vexagpx
