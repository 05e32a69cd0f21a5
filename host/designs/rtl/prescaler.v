// Ticks once in divisor + 1 clocks while running.

`default_nettype none

module prescaler (
    input  wire       clk,
    input  wire       reset,
    input  wire       run,
    input  wire [7:0] divisor,
    output wire       tick
);
    reg [7:0] left;

    assign tick = run && (left == 8'd0);

    always @(posedge clk)
        if (reset || !run || tick)
            left <= divisor;
        else
            left <= left - 8'd1;
endmodule

`default_nettype wire
