// Turns the push button into a clean reset: asserted at once, released 16 clocks after the button is let go.

`default_nettype none

module reset_synchroniser (
    input  wire clk,
    input  wire button_n,
    output wire reset
);
    reg [1:0] sync;
    reg [3:0] hold;

    always @(posedge clk or negedge button_n)
        if (!button_n)
            sync <= 2'b00;
        else
            sync <= {sync[0], 1'b1};

    always @(posedge clk or negedge button_n)
        if (!button_n)
            hold <= 4'd0;
        else if (sync[1] && !(&hold))
            hold <= hold + 4'd1;

    assign reset = !(&hold);
endmodule

`default_nettype wire
