#include "Common/Clock.h"

#include <boost/date_time/posix_time/posix_time.hpp>

namespace Zuvan::Lumeq::Common {

std::int64_t UtcMilliseconds() {
    using namespace boost::posix_time;
    static const ptime epoch = time_from_string("1970-01-01 00:00:00.000");
    return (microsec_clock::universal_time() - epoch).total_milliseconds();
}

} // namespace Zuvan::Lumeq::Common
