#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::uint64_t kLastSecond = 24 * 60 * 60 - 1;
constexpr std::uint64_t kLastFrame = 29;
constexpr NumberForm kSyncId{0x00FFFFFFFFFFFFFF, 0, 14};
constexpr std::int32_t kColdest = -128;
constexpr std::int32_t kHottest = 127;
constexpr std::int32_t kHottestDie = 1000;

/// Bits 8 to 31 where they are.
Codec<std::uint32_t> highBits() {
    const Codec<std::uint32_t> any = word<std::uint32_t>();
    return {[any](const JsonPlace& place) {
                const std::uint32_t bits = any.read(place);
                if ((bits & 0xFF) != 0) {
                    place.refuse("the low byte is the temperature");
                }
                return bits;
            },
            any.write};
}

Codec<FrameRate> frameRate() {
    return {[](const JsonPlace& place) {
                const std::uint64_t frames = readNumberAt(place, {30, 25});
                if (frames != 25 && frames != 30) {
                    place.refuse("want 25 or 30");
                }
                return static_cast<FrameRate>(frames);
            },
            [](const FrameRate& rate) { return JsonValue{static_cast<std::uint64_t>(rate)}; }};
}

}  // namespace

template <>
const std::vector<Field<TimeCode>>& fieldsOf() {
    static const std::vector<Field<TimeCode>> fields{
        required("seconds", &TimeCode::seconds, number<std::uint32_t>({kLastSecond})),
        required("frames", &TimeCode::frames, number<std::uint32_t>({kLastFrame})),
        omittable("user_bits", &TimeCode::userBits, arrayOf<std::uint8_t, 4>(word<std::uint8_t>())),
    };
    return fields;
}

template <>
const std::vector<Field<SyncSettings>>& fieldsOf() {
    static const std::vector<Field<SyncSettings>> fields{
        required("id", &SyncSettings::id, number<std::uint64_t>(kSyncId)),
        required("master_id", &SyncSettings::master, number<std::uint64_t>(kSyncId)),
        required("is_master", &SyncSettings::isMaster, truth()),
        required("frame_rate", &SyncSettings::rate, frameRate()),
        omittable("network_id", &SyncSettings::networkId, word<std::uint32_t>()),
        omittable("time_code", &SyncSettings::timeCode, record<TimeCode>()),
    };
    return fields;
}

template <>
const std::vector<Field<SyncPart>>& fieldsOf() {
    static const std::vector<Field<SyncPart>> fields{
        required("core", &SyncPart::core, coreName()),
        required("settings", &SyncPart::settings, record<SyncSettings>()),
    };
    return fields;
}

template <>
const std::vector<Field<MiscPart>>& fieldsOf() {
    static const std::vector<Field<MiscPart>> fields{
        required("core", &MiscPart::core, coreName()),
        required("celsius", &MiscPart::celsius, integer(kColdest, kHottest)),
        omittable("others", &MiscPart::others, highBits()),
    };
    return fields;
}

template <>
const std::vector<Field<TemperaturePart>>& fieldsOf() {
    static const std::vector<Field<TemperaturePart>> fields{
        required("core", &TemperaturePart::core, coreName()),
        required("celsius", &TemperaturePart::celsius, integer(0, kHottestDie)),
    };
    return fields;
}

Codec<SyncPart> syncBlock() {
    return record<SyncPart>([](const JsonPlace& place, const SyncPart& sync) {
        if (sync.settings.timeCode.frames >= static_cast<std::uint32_t>(sync.settings.rate)) {
            place.member("settings")
                .member("time_code")
                .member("frames")
                .refuse("the frame rate has no such");
        }
    });
}

}  // namespace boardsim
