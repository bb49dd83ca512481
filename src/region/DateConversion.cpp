#include "region/DateConversion.h"

#include "region/DateUtilities.h"

namespace kpx {

void arrayToNSDate(Records& records, std::string_view forKey, const Environment& environment) {
    const Text key(forKey);
    for (Record& record : records) {
        if (const auto text = record.text(forKey)) {
            record.set(key, dateFromYYMMDDStr(*text, environment));
        }
    }
}

void arrayNSDateToString(Records& records, std::string_view forKey, const Environment& environment) {
    const Text key(forKey);
    for (Record& record : records) {
        if (const auto date = record.date(forKey)) {
            record.set(key, YYYYMMDDStrFromDate(*date, environment));
        }
    }
}

}  // namespace kpx
