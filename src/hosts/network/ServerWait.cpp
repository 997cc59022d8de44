#include "hosts/network/ServerWait.h"

namespace nib {

using namespace std::chrono;

WaitEnded::WaitEnded(bool resetWanted)
    : Error(error_number::kDeviceUnavailable,
            resetWanted ? Text(u"The connection was reset.") : Text(u"The request was cancelled.")),
      reset(resetWanted)
{
}

void ServerWait::Enter(TextView what)
{
    const bool busy = elsewhere_ || (depth_ == 0 && notice_ && !notice_->Started(what));
    if (busy) throw Error(error_number::kStorage, Text(what) + u" has to wait: another request to a host is pending.");
    if (depth_++ > 0) return;
    what_ = what;
    start_ = steady_clock::now();
}

void ServerWait::Leave()
{
    if (--depth_ == 0 && notice_) notice_->Ended();
}

void ServerWait::Hide()
{
    elsewhere_ = true;
    if (depth_ > 0 && notice_) notice_->Ended();
}

void ServerWait::Show()
{
    elsewhere_ = false;
    if (depth_ > 0 && notice_) notice_->Started(what_);
    start_ = steady_clock::now();
}

void ServerWait::Step(WaitStage stage, int32_t percent)
{
    if (stopped_ && *stopped_) throw WaitEnded(false); // and its connection is left in order
    if (!notice_ || depth_ == 0) return;
    notice_->Tell(stage, percent);
    elsewhere_ = true;
    const bool goOn = notice_->GoOn(duration_cast<milliseconds>(steady_clock::now() - start_));
    elsewhere_ = false;
    if (!goOn) throw WaitEnded(notice_->ResetWanted());
}

} // namespace nib
