/* Rail telemetry over PMBus for the Halvet board. */
#ifndef PMBUS_MONITOR_H
#define PMBUS_MONITOR_H

int pmbus_monitor_read_mv(unsigned address);
int pmbus_monitor_read_ma(unsigned address);

#endif
