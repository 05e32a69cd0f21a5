// Transmitter: start bit, eight data bits from the lowest, stop bit. Takes the next byte as soon as the last stop bit
// is out.

`default_nettype none

module uart_transmitter (
    input  wire       clk,
    input  wire       reset,
    input  wire       tick,
    input  wire [7:0] data,
    input  wire       valid,
    output wire       take,
    output wire       serial
);
    reg [9:0] shift;              // what is still to go out, idle bits behind it
    reg [3:0] bits_left;
    reg [2:0] phase;

    wire idle     = (bits_left == 4'd0);
    wire bit_done = tick && (phase == 3'd7);

    assign take   = idle && valid;
    assign serial = shift[0];

    always @(posedge clk)
        if (reset) begin
            shift     <= 10'h3ff;
            bits_left <= 4'd0;
            phase     <= 3'd0;
        end else if (take) begin
            shift     <= {1'b1, data, 1'b0};
            bits_left <= 4'd10;
            phase     <= 3'd0;
        end else if (!idle) begin
            if (tick)
                phase <= phase + 3'd1;
            if (bit_done) begin
                shift     <= {1'b1, shift[9:1]};
                bits_left <= bits_left - 4'd1;
            end
        end
endmodule

`default_nettype wire
