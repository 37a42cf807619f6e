/* Rail telemetry over PMBus for the Halvet board. */
#include "pmbus_monitor.h"

extern int board_iic_read_word(unsigned address, unsigned command);

/* READ_VOUT and READ_IOUT in linear format with a fixed exponent of -10. */
int pmbus_monitor_read_mv(unsigned address)
{
    return (board_iic_read_word(address, 0x8B) * 1000) >> 10;
}

int pmbus_monitor_read_ma(unsigned address)
{
    return (board_iic_read_word(address, 0x8C) * 1000) >> 10;
}
