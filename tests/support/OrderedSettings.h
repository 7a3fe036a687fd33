// Settings that note every access in its order.
#pragma once

#include "support/Doubles.h"

#include <optional>
#include <string>
#include <vector>

namespace quavernet::test {

class OrderedSettings : public MapSettings {
public:
    std::optional<std::string> Query(const std::string& application, const std::string& section,
                                     const std::string& name) override {
        reads.push_back(name);
        return MapSettings::Query(application, section, name);
    }
    void Set(const std::string& application, const std::string& section, const std::string& name,
             const std::string& value) override {
        writes.push_back(name + "=" + value);
        MapSettings::Set(application, section, name, value);
    }

    std::vector<std::string> reads;  ///< Names.
    std::vector<std::string> writes; ///< "Name=value".
};

} // namespace quavernet::test
