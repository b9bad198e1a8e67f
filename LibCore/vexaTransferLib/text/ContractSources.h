// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

// The sources that contract reports name: the public class on whose behalf a check runs. `__FILE__` would
// show the path of the machine that built the library.

namespace vexaTransferLib::text {

inline constexpr char kGpxVersionSource[] = "LibCore/vexaTransferLib/GpxVersion.cpp";
inline constexpr char kGpxUrlSource[] = "LibCore/vexaTransferLib/GpxUrl.cpp";
inline constexpr char kGpxPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
inline constexpr char kGpxRouteSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";
inline constexpr char kGpxTrackSource[] = "LibCore/vexaTransferLib/GpxTrack.cpp";
inline constexpr char kGpxDocumentSource[] = "LibCore/vexaTransferLib/GpxDocument.cpp";
inline constexpr char kGpxElementEditorSource[] = "LibCore/vexaTransferLib/GpxElementEditor.cpp";
inline constexpr char kGpxListEditorSource[] = "LibCore/vexaTransferLib/GpxListEditor.cpp";
inline constexpr char kGpxUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
inline constexpr char kGpxParserSource[] = "LibCore/vexaTransferLib/GpxParser.cpp";
inline constexpr char kGpxTarvikExtParserSource[] = "LibCore/vexaTransferLib/GpxTarvikExtParser.cpp";
inline constexpr char kCleanTextSource[] = "LibCore/vexaTransferLib/CleanText.h";

} // namespace vexaTransferLib::text
