// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/EncodingShape.h>
#include <vexaTransferLib/reader/InputLimiter.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

namespace vexaTransferLib::reader {

/// Checks the bytes of an untrusted file before the XML parser reads them, because the parser reads a start
/// tag, a comment, a CDATA section or a processing instruction to its end before it reports it. Finds the
/// place where one of these exceeds the limits. It recognises only where markup starts and ends. Bytes after
/// an error of well-formedness do not matter, because the parser ends there.
class TagWatcher {
public:
    using Extent = InputLimiter::Extent;

    /// \param the file's name, for messages
    /// \param encoding the encoding that the host has set, which overrides the one that the file declares;
    ///             empty when it has set none
    TagWatcher(const GpxInputLimits& limits, const InputName& name, Extent extent,
               const std::u16string& encoding);

    /// Looks at the next bytes of the file. Returns how many of them the parser may have: all, or those
    /// before the place where the file is refused. Never returns 0 for the first bytes, because that would
    /// look like an empty file.
    std::size_t Watch(const unsigned char* bytes, std::size_t size);

    /// \throws ReadAborted when the file is refused at a place that Watch has found
    void ThrowIfRefused() const;

private:
    enum class State {
        kStart, ///< at the start of the file or after its XML declaration; the width of characters is unknown
        kText,
        kOpened, ///< after "<"
        kTag,
        kQuoted,
        kEndTag,
        kInstruction,
        kMarkup,      ///< after "<!"
        kCommentOpen, ///< after "<!-"
        kComment,
        kCData,
        kDocumentType,
        kLeft ///< the bytes so far are ill-formed, which the parser will report
    };

    std::size_t WithinHead(std::size_t size);
    void TakeEncoding(const std::u16string& encoding);
    void TakePlain(const unsigned char*& at, const unsigned char* end);
    void TakePlainTag(const unsigned char*& at, const unsigned char* end);
    std::size_t Skip(const unsigned char* bytes, std::size_t size);
    void TakeByte(unsigned char byte);
    void TakeStart(unsigned char byte);
    void TakeStartBytes();
    void TakeUnitByte(unsigned char byte);
    void Take(char character);
    void TakeText(char character);
    void TakeOpened(char character);
    void TakeInTag(char character);
    void TakeMarkup(char character);
    void TakeInstruction(char character);
    void EndAfter(char character, char repeated, unsigned times);
    void EndDeclaration();
    void Begin(State state) { state_ = state, run_ = 0; }
    void AddLength(std::size_t bytes);
    std::uint64_t TextBytes() const;

    GpxInputLimits limits_;
    InputLimiter limiter_;
    Extent extent_;
    bool isForced_;
    std::exception_ptr refusal_;
    std::uint64_t bytesSeen_ = 0;

    State state_ = State::kStart;
    std::array<unsigned char, 4> start_{};
    std::size_t startSize_ = 0;
    /// Nothing but a byte order mark has been seen.
    bool isAtStart_ = true;
    bool isDeclaration_ = false;
    /// The content of the XML declaration, without repeated white space.
    std::string declaration_;

    /// Bytes of a character: 1, 2 or 4.
    unsigned width_ = 1;
    bool isBigEndian_ = false;
    std::uint32_t unit_ = 0;
    unsigned unitBytes_ = 0;
    std::bitset<256> leads_;
    /// Characters of markup are bytes that are never part of another character.
    bool isPlain_ = true;
    bool isAfterLead_ = false;

    /// The length of the markup, from its "<".
    std::uint64_t length_ = 0;
    std::uint64_t attributes_ = 0;
    char quote_ = '"';
    /// How many of the characters that end the markup have come directly one after the other.
    unsigned run_ = 0;
};

} // namespace vexaTransferLib::reader
