// One PWM output. A new duty takes effect at the end of the cycle in progress, so that no pulse is cut; while the
// timer stands still, at once.

`default_nettype none

module pwm_channel (
    input  wire       clk,
    input  wire       reset,
    input  wire       load,
    input  wire [7:0] load_data,
    input  wire       run,
    input  wire       cycle_end,
    input  wire [7:0] count,
    input  wire       invert,
    output reg  [7:0] duty,       // as last written
    output reg        pwm
);
    reg [7:0] active_duty;

    always @(posedge clk)
        if (reset)
            duty <= 8'd0;
        else if (load)
            duty <= load_data;

    always @(posedge clk)
        if (reset)
            active_duty <= 8'd0;
        else if (!run || cycle_end)
            active_duty <= duty;

    always @(posedge clk)
        if (reset)
            pwm <= 1'b0;
        else
            pwm <= (run && count < active_duty) ^ invert;
endmodule

`default_nettype wire
