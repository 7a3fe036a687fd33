#include "app/EndWord.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"

#include <algorithm>

namespace quavernet {

namespace {

std::string TwoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string DurationText(std::int64_t seconds) {
    const std::int64_t all = std::max<std::int64_t>(seconds, 0);
    const std::int64_t hours = all / 3600;
    const std::int64_t minutes = all / 60 % 60;
    const std::string start =
        hours > 0 ? std::to_string(hours) + ":" + TwoDigits(minutes) : std::to_string(minutes);
    return start + ":" + TwoDigits(all % 60);
}

EndWord::EndWord() : m_begin(services.clock->Now()) {}

void EndWord::Count(std::size_t count, std::int32_t textId) {
    Say(std::to_string(count) + LoadResString(textId));
}

void EndWord::Count(std::size_t count, std::int32_t oneId, std::int32_t manyId) {
    Count(count, count == 1 ? oneId : manyId);
}

void EndWord::Say(const std::string& text) {
    m_pieces += (m_pieces.empty() ? "" : ", ") + text;
}

std::string EndWord::Done() const {
    return LoadResString(Texts::Done) + PiecesAndTime();
}

std::string EndWord::Cancelled() const {
    return LoadResString(Texts::CancelledAfter) + Time() + (m_pieces.empty() ? "" : ": " + m_pieces);
}

std::string EndWord::EndedEarly() const {
    return LoadResString(Texts::EndedEarly) + PiecesAndTime();
}

std::string EndWord::Time() const {
    return DurationText(SecondsBetween(m_begin, services.clock->Now()));
}

std::string EndWord::PiecesAndTime() const {
    return m_pieces + (m_pieces.empty() ? "" : ", ") + Time();
}

} // namespace quavernet
