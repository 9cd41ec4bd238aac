// The dispatch library: the main queue.
#pragma once

#include <cstdint>

extern "C" {

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef std::uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void* context);
#define DISPATCH_TIME_NOW (static_cast<dispatch_time_t>(0))

dispatch_queue_t dispatch_get_main_queue(void);
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work);

} // extern "C"
