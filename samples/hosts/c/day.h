#ifndef SAMPLE_DAY_H
#define SAMPLE_DAY_H

// Plays the day. Returns 1 if the library answered as it should, else 0.
int play_day(int use_worker_thread);

#endif
