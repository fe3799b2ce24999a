#pragma once

#include "Tools/boardinfo/Report.h"

namespace samples {

/// A small report with everything that a report can hold.
inline boardinfo::Report smallReport() {
    using namespace boardinfo;
    Section identity{"identity"};
    identity.rows = {answered("card ID", std::string("CT: 0x80")), failed("card serial"),
                     notPresent("switch card ID")};
    Section temperatures{"temperatures"};
    temperatures.rows = {
        answered("FPGA", std::int64_t{47}, "°C").with("limit", std::int64_t{95}, "°C"),
        answered("fan", std::int64_t{61}, "°C").with("limit", std::int64_t{60}, "°C"),
    };
    Section cores{"FPGA cores", Form::Found};
    cores.rows = {
        Row{"central_sync", State::Ok}
            .with("version", std::string("0x00030002"))
            .with("addresses", std::vector<std::string>{"0x00000400", "0x00000440"}),
        Row{"version_only", State::Ok}
            .with("version", std::string("0x00010000"))
            .with("addresses", std::vector<std::string>{}),
    };
    Section chips{"chips on 1-Wire", Form::Found};
    Section sync{"sync"};
    sync.rows = {answered("is master", true), answered("drift", -0.0625, "s")};
    return {"orca", {identity, temperatures, cores, chips, sync}};
}

}  // namespace samples
