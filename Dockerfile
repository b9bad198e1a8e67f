# SPDX-License-Identifier: MIT
# Builds the library and the tool on Debian 12, runs the tests, and leaves a small image with the tool alone:
#   docker build --tag vexagpx .
#   docker run --rm --volume "$PWD:/data" --user "$(id --user):$(id --group)" vexagpx show walk.gpx

FROM debian:bookworm-slim AS build
COPY scripts/install-dependencies /tmp/install-dependencies
RUN /tmp/install-dependencies
COPY . /src
WORKDIR /src
RUN cmake --preset package -DVEXATRANSFERLIB_BUILD_TESTS=ON && cmake --build --preset package
RUN ctest --test-dir build/package --output-on-failure
RUN cd build/package && cpack

FROM debian:bookworm-slim
COPY --from=build /src/build/package/packages/libvexatransferlib1_*.deb \
    /src/build/package/packages/libvexatracklib1_*.deb \
    /src/build/package/packages/vexagpx_*.deb /tmp/packages/
RUN apt-get update \
    && apt-get install --yes --no-install-recommends /tmp/packages/*.deb \
    && rm -rf /tmp/packages /var/lib/apt/lists/*
USER nobody
WORKDIR /data
ENTRYPOINT ["vexagpx"]
