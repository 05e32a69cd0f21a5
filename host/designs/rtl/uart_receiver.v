// Receiver with eightfold oversampling. A start bit must still be low in its middle; a byte without a stop bit is
// dropped.

`default_nettype none

module uart_receiver (
    input  wire       clk,
    input  wire       reset,
    input  wire       tick,
    input  wire       serial,
    output reg  [7:0] data,
    output reg        valid       // for one clock
);
    localparam [1:0] IDLE = 2'd0, START = 2'd1, DATA = 2'd2, STOP = 2'd3;

    reg [1:0] state;
    reg [1:0] sync;               // against metastability
    reg [2:0] phase;              // tick within the bit
    reg [2:0] bit_index;

    wire line = sync[1];

    always @(posedge clk)
        sync <= {sync[0], serial};

    always @(posedge clk)
        if (reset) begin
            state     <= IDLE;
            phase     <= 3'd0;
            bit_index <= 3'd0;
            data      <= 8'd0;
            valid     <= 1'b0;
        end else begin
            valid <= 1'b0;
            if (tick) begin
                phase <= phase + 3'd1;
                case (state)
                    IDLE:
                        if (!line) begin
                            state <= START;
                            phase <= 3'd0;
                        end
                    START:
                        if (phase == 3'd2) begin
                            // The middle of the start bit; every bit that follows is sampled 8 ticks on.
                            state     <= line ? IDLE : DATA;
                            phase     <= 3'd0;
                            bit_index <= 3'd0;
                        end
                    DATA:
                        if (phase == 3'd7) begin
                            data      <= {line, data[7:1]};
                            bit_index <= bit_index + 3'd1;
                            if (bit_index == 3'd7)
                                state <= STOP;
                        end
                    STOP:
                        if (phase == 3'd7) begin
                            valid <= line;
                            state <= IDLE;
                        end
                endcase
            end
        end
endmodule

`default_nettype wire
