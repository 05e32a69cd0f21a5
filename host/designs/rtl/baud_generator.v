// Fractional divider: adds TICK_HZ / CLOCK_HZ, scaled to 16 bits, at each clock and ticks at the carry. The long-term
// rate is right to 1 part in 65536 * TICK_HZ / CLOCK_HZ, whatever the clock.

`default_nettype none

module baud_generator #(
    parameter CLOCK_HZ = 12000000,
    parameter TICK_HZ  = 921600
) (
    input  wire clk,
    input  wire reset,
    output reg  tick
);
    // In steps of 1/16 Hz less than the clock would need, so that the product stays below 2^31.
    localparam [15:0] INCREMENT = ((TICK_HZ / 16) * 4096) / (CLOCK_HZ / 256);

    reg [15:0] accumulator;

    always @(posedge clk)
        if (reset)
            {tick, accumulator} <= 17'd0;
        else
            {tick, accumulator} <= {1'b0, accumulator} + {1'b0, INCREMENT};
endmodule

`default_nettype wire
